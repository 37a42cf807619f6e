// A small streaming JSON writer: enough for the tool's reports, with correct
// string escaping (control bytes escaped, other bytes passed through).
#ifndef ZRBOARD_JSON_H
#define ZRBOARD_JSON_H

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <string>
#include <vector>

namespace zrboard {

class JsonWriter {
public:
    explicit JsonWriter(std::ostream& out) : m_out(out) {}

    JsonWriter& beginObject() { return open('{'); }
    JsonWriter& endObject() { return close('}'); }
    JsonWriter& beginArray() { return open('['); }
    JsonWriter& endArray() { return close(']'); }

    JsonWriter& key(const std::string& k) {
        separate();
        writeString(k);
        m_out << ": ";
        m_afterKey = true;
        return *this;
    }
    JsonWriter& value(const std::string& v) {
        separate();
        writeString(v);
        return *this;
    }
    JsonWriter& value(const char* v) { return value(std::string(v ? v : "")); }
    JsonWriter& value(bool v) {
        separate();
        m_out << (v ? "true" : "false");
        return *this;
    }
    JsonWriter& value(long long v) {
        separate();
        m_out << v;
        return *this;
    }
    JsonWriter& value(int v) { return value(static_cast<long long>(v)); }
    // Shortest text that reads back as the same double; no JSON number for NaN or infinity.
    JsonWriter& value(double v) {
        if (!std::isfinite(v))
            return null();
        separate();
        char buf[32];
        for (int precision = 15; precision <= 17; ++precision) {
            snprintf(buf, sizeof buf, "%.*g", precision, v);
            if (std::strtod(buf, nullptr) == v)
                break;
        }
        m_out << buf;
        return *this;
    }
    JsonWriter& value(unsigned long v) { return value(static_cast<long long>(v)); }
    JsonWriter& null() {
        separate();
        m_out << "null";
        return *this;
    }
    JsonWriter& strings(const std::vector<std::string>& items) {
        beginArray();
        for (const auto& s : items)
            value(s);
        return endArray();
    }
    template <class T>
    JsonWriter& field(const std::string& k, const T& v) {
        key(k);
        return value(v);
    }

private:
    JsonWriter& open(char c) {
        separate();
        m_out << c;
        m_first.push_back(true);
        return *this;
    }
    JsonWriter& close(char c) {
        const bool empty = m_first.back();
        m_first.pop_back();
        if (!empty)
            newline();
        m_out << c;
        if (m_first.empty())
            m_out << "\n";
        return *this;
    }
    void newline() {
        m_out << "\n";
        for (std::size_t i = 0; i < m_first.size(); ++i)
            m_out << "  ";
    }
    void separate() {
        if (m_afterKey) {
            m_afterKey = false;
            return;
        }
        if (m_first.empty())
            return;
        if (!m_first.back())
            m_out << ",";
        m_first.back() = false;
        newline();
    }
    void writeString(const std::string& s) {
        static const char hex[] = "0123456789abcdef";
        m_out << '"';
        for (unsigned char c : s) {
            switch (c) {
            case '"': m_out << "\\\""; break;
            case '\\': m_out << "\\\\"; break;
            case '\n': m_out << "\\n"; break;
            case '\r': m_out << "\\r"; break;
            case '\t': m_out << "\\t"; break;
            default:
                if (c < 0x20)
                    m_out << "\\u00" << hex[c >> 4] << hex[c & 15];
                else
                    m_out << c;
            }
        }
        m_out << '"';
    }

    std::ostream& m_out;
    std::vector<bool> m_first;
    bool m_afterKey = false;
};

}  // namespace zrboard

#endif
