// A collection as the scripting layers hold it: a context and a shared,
// reference-counted list. Copies share the list, so an append through one
// copy shows through all.
#ifndef ZR_COMMON_TCL_COLLECTION_H
#define ZR_COMMON_TCL_COLLECTION_H

#include <cstddef>
#include <string>

#include "HTCErrors.h"
#include "collection_context.h"
#include "collection_wrapper.h"
#include "tclany.h"

namespace zrc {
namespace tcltasks {

template <class Container>
struct collection_traits {
    typedef typename Container::value_type value_type;
    static std::string to_string(const std::string& v) { return v; }
    static std::string to_string(const tclany& v) { return v.to_string(); }
};

template <class Container, class Traits = collection_traits<Container>>
class tcl_collection {
public:
    typedef collection_wrapper<Container, Traits> wrapper_type;
    typedef typename Container::value_type value_type;

    tcl_collection() : m_wrapper(new wrapper_type) { m_wrapper->incr_ref(); }
    tcl_collection(const tcl_collection& other) : m_context(other.m_context), m_wrapper(other.m_wrapper) {
        m_wrapper->incr_ref();
    }
    tcl_collection& operator=(const tcl_collection& other) {
        other.m_wrapper->incr_ref();
        m_wrapper->decr_ref();
        m_wrapper = other.m_wrapper;
        m_context = other.m_context;
        return *this;
    }
    ~tcl_collection() { m_wrapper->decr_ref(); }

    std::size_t size() const { return m_wrapper->items().size(); }
    bool empty() const { return size() == 0; }
    const value_type& operator[](std::size_t index) const { return at(index); }
    const value_type& at(std::size_t index) const {
        if (index >= size())
            throw HTCErrors::index_out_of_range(static_cast<int>(index));
        return m_wrapper->items()[index];
    }
    void append(const value_type& value) { m_wrapper->items().push_back(value); }

    const Container& items() const { return m_wrapper->items(); }
    collection_context& context() { return m_context; }
    const collection_context& context() const { return m_context; }
    wrapper_type* wrapper() const { return m_wrapper; }

    // The text a script sees: the context's own text when it has one, else the
    // elements blank separated, cut at the display limit with " ...".
    std::string get_string_rep() const {
        if (m_context.get_use_collection_context_string_rep())
            return m_context.get_string_rep();
        std::size_t n = size();
        bool cut = false;
        if (collection_result_display_limit_check_enabled()) {
            int limit = get_collection_result_display_limit();
            std::size_t shown = limit < 0 ? 0 : static_cast<std::size_t>(limit);
            if (n > shown) {
                n = shown;
                cut = true;
            }
        }
        std::string text;
        for (std::size_t i = 0; i < n; ++i) {
            if (i)
                text += ' ';
            text += Traits::to_string(m_wrapper->items()[i]);
        }
        if (cut)
            text += " ...";
        return text;
    }

private:
    collection_context m_context;
    wrapper_type* m_wrapper;
};

}  // namespace tcltasks
}  // namespace zrc

#endif
