// The shared, reference-counted body of a script collection. Scripts and
// results can hold one collection at once; the last reference frees it.
#ifndef ZR_COMMON_COLLECTION_WRAPPER_H
#define ZR_COMMON_COLLECTION_WRAPPER_H

#include <cstddef>
#include <string>

namespace zrc {
namespace tcltasks {

class collection_wrapper_base {
public:
    collection_wrapper_base() = default;
    collection_wrapper_base(const collection_wrapper_base&) = delete;
    collection_wrapper_base& operator=(const collection_wrapper_base&) = delete;
    virtual ~collection_wrapper_base();

    void incr_ref() { ++m_refs; }
    // Frees the wrapper with its last reference.
    void decr_ref() {
        if (--m_refs <= 0)
            delete this;
    }
    int ref_count() const { return m_refs; }

    virtual std::size_t size() const = 0;
    virtual std::string element_string(std::size_t index) const = 0;

private:
    int m_refs = 0;
};

template <class Container, class Traits>
class collection_wrapper : public collection_wrapper_base {
public:
    std::size_t size() const override { return m_items.size(); }
    std::string element_string(std::size_t index) const override { return Traits::to_string(m_items[index]); }

    Container& items() { return m_items; }
    const Container& items() const { return m_items; }

private:
    Container m_items;
};

}  // namespace tcltasks
}  // namespace zrc

#endif
