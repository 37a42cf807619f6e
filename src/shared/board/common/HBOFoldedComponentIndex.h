// The components of a board by case-folded name, for passes that look many
// names up while the board's components stay as they are. Answers as
// HBOBoard::getCompByName does: of the names that fold alike, the first in
// key order; nothing for an empty name.
#ifndef HBOFOLDEDCOMPONENTINDEX_H
#define HBOFOLDEDCOMPONENTINDEX_H

#include <string>
#include <unordered_map>

#include "HBOBoard.h"
#include "HBOCase.h"

class HBOFoldedComponentIndex {
public:
    explicit HBOFoldedComponentIndex(const HBOBoard::ComponentMap& components) {
        m_byFolded.reserve(components.size());
        for (const auto& entry : components)
            m_byFolded.emplace(HBOCase::lower(entry.first), entry.second);  // the first of a fold stays
    }

    HBOBoardComponent* find(const std::string& name) const {
        if (name.empty())
            return nullptr;
        auto it = m_byFolded.find(HBOCase::lower(name));
        return it == m_byFolded.end() ? nullptr : it->second;
    }

private:
    std::unordered_map<std::string, HBOBoardComponent*> m_byFolded;
};

#endif
