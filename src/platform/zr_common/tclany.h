// A script-side value of any type: what the scripting layers hand to property
// functions and keep in collections.
#ifndef ZR_COMMON_TCLANY_H
#define ZR_COMMON_TCLANY_H

#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace zrc {
namespace tcltasks {

class tclany_iholder {
public:
    virtual ~tclany_iholder();
    virtual const std::type_info& type() const = 0;
    virtual tclany_iholder* clone() const = 0;
    virtual std::string to_string() const = 0;
};

namespace detail {
std::string demangled(const std::type_info& type);
std::string pointer_text(const std::type_info& type, const void* p);

inline std::string value_text(const std::string& v) { return v; }
inline std::string value_text(const char* v) { return v ? v : ""; }
inline std::string value_text(bool v) { return v ? "1" : "0"; }
template <class T>
typename std::enable_if<std::is_arithmetic<T>::value, std::string>::type value_text(const T& v) {
    return std::to_string(v);
}
// An object shows as its type and address; scripting layers give handles their own text.
template <class T>
std::string value_text(T* p) {
    return pointer_text(typeid(T*), static_cast<const void*>(p));
}
}  // namespace detail

template <class T>
class tclany_holder : public tclany_iholder {
public:
    explicit tclany_holder(const T& value) : held(value) {}
    const std::type_info& type() const override { return typeid(T); }
    tclany_iholder* clone() const override { return new tclany_holder(held); }
    std::string to_string() const override { return detail::value_text(held); }

    T held;
};

class tclany {
public:
    tclany() = default;
    template <class T, class = typename std::enable_if<!std::is_same<typename std::decay<T>::type, tclany>::value>::type>
    tclany(const T& value) : m_holder(new tclany_holder<typename std::decay<T>::type>(value)) {}
    tclany(const tclany& other) : m_holder(other.m_holder ? other.m_holder->clone() : nullptr) {}
    tclany(tclany&& other) noexcept : m_holder(other.m_holder) { other.m_holder = nullptr; }
    tclany& operator=(tclany other) {
        std::swap(m_holder, other.m_holder);
        return *this;
    }
    ~tclany() { delete m_holder; }

    bool empty() const { return m_holder == nullptr; }
    const std::type_info& type() const { return m_holder ? m_holder->type() : typeid(void); }

    // The held value, or null when this holds nothing or another type.
    template <class T>
    const T* get() const {
        if (!m_holder || m_holder->type() != typeid(T))
            return nullptr;
        return &static_cast<const tclany_holder<T>*>(m_holder)->held;
    }

    // The value's text: strings as they are, numbers in decimal, booleans as 1 and 0.
    std::string to_string() const { return m_holder ? m_holder->to_string() : std::string(); }

private:
    tclany_iholder* m_holder = nullptr;
};

}  // namespace tcltasks
}  // namespace zrc

#endif
