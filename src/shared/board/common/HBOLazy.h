// A member that most objects leave empty: it is made on first use, so that an
// unused one costs a pointer. Any reference to it, taken by a read or a write,
// stays good for the owner's life, as with a plain member.
#ifndef HBOLAZY_H
#define HBOLAZY_H

#include <memory>

template <class T>
class HBOLazy {
public:
    HBOLazy() = default;
    HBOLazy(const HBOLazy& other) : m_value(other.m_value ? new T(*other.m_value) : nullptr) {}
    // Assigns into a value that exists already, so that references to it stay good.
    HBOLazy& operator=(const HBOLazy& other) {
        if (this == &other)
            return *this;
        if (other.m_value)
            get() = *other.m_value;
        else if (m_value)
            *m_value = T();
        return *this;
    }

    // Made empty on the first call.
    T& get() const {
        if (!m_value)
            m_value.reset(new T());
        return *m_value;
    }
    // Null while nothing asked for the value.
    const T* peek() const { return m_value.get(); }

private:
    mutable std::unique_ptr<T> m_value;
};

#endif
