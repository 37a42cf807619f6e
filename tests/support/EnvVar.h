// Sets (or, with null, unsets) an environment variable for one scope and puts
// the old value back.
#ifndef ZR_TESTS_ENVVAR_H
#define ZR_TESTS_ENVVAR_H

#include <cstdlib>
#include <string>

class EnvVar {
public:
    EnvVar(const char* name, const char* value) : m_name(name) {
        const char* old = std::getenv(name);
        m_had = old != nullptr;
        if (old)
            m_old = old;
        if (value)
            setenv(name, value, 1);
        else
            unsetenv(name);
    }
    EnvVar(const char* name, const std::string& value) : EnvVar(name, value.c_str()) {}
    ~EnvVar() {
        if (m_had)
            setenv(m_name, m_old.c_str(), 1);
        else
            unsetenv(m_name);
    }
    EnvVar(const EnvVar&) = delete;
    EnvVar& operator=(const EnvVar&) = delete;

private:
    const char* m_name;
    bool m_had = false;
    std::string m_old;
};

#endif
