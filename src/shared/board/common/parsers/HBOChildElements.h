// The element children of one XML element, walked in document order without
// copying them out: the reader visits every element of a large board, and a
// list per element was a large share of its allocations.
#ifndef HBOCHILDELEMENTS_H
#define HBOCHILDELEMENTS_H

#include <cstddef>
#include <iterator>

#include "HXMLWElement.h"

class HBOChildElements {
public:
    class iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = HXMLWElement*;
        using difference_type = std::ptrdiff_t;
        using pointer = HXMLWElement* const*;
        using reference = HXMLWElement*;

        iterator(const HXMLWElement* parent, int index) : m_parent(parent), m_index(index) {}
        HXMLWElement* operator*() const { return m_parent->getChild(m_index); }
        iterator& operator++() {
            ++m_index;
            return *this;
        }
        bool operator==(const iterator& other) const { return m_index == other.m_index; }
        bool operator!=(const iterator& other) const { return m_index != other.m_index; }

    private:
        const HXMLWElement* m_parent;
        int m_index;
    };

    explicit HBOChildElements(const HXMLWElement* parent)
        : m_parent(parent), m_count(parent ? parent->getChildCount() : 0) {}

    iterator begin() const { return iterator(m_parent, 0); }
    iterator end() const { return iterator(m_parent, m_count); }
    bool empty() const { return m_count == 0; }
    std::size_t size() const { return static_cast<std::size_t>(m_count); }

private:
    const HXMLWElement* m_parent;
    int m_count;
};

#endif
