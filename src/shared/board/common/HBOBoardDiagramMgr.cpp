#include "HBOBoardDiagramMgr.h"

#include "HBOBoard.h"

namespace {
HBOBoardDiagramMgr* g_instance = nullptr;
}

HBOBoardDiagramMgr* HBOBoardDiagramMgr::getGlobal() {
    if (!g_instance)
        g_instance = new HBOBoardDiagramMgr();
    ++g_instance->m_ref_count;
    return g_instance;
}

void HBOBoardDiagramMgr::release() {
    if (!g_instance)
        return;
    if (--g_instance->m_ref_count <= 0) {
        delete g_instance;
        g_instance = nullptr;
    }
}

void HBOBoardDiagramMgr::addToOpenedBoardDiagrams(HBOBoard* board) {
    if (board)
        m_opened.insert(std::make_pair(board->getName(), board));
}

void HBOBoardDiagramMgr::removeFromOpenedBoardDiagrams(std::string name) {
    std::map<std::string, HBOBoard*>::iterator it = m_opened.find(name);
    if (it == m_opened.end())
        return;
    m_opened.erase(it);
    if (m_current && m_current->getName() == name)
        m_current = nullptr;
}

void HBOBoardDiagramMgr::getOpenedBoardDiagrams(std::vector<HBOBoard*>& out) const {
    for (const auto& entry : m_opened)
        out.push_back(entry.second);
}

HBOBoard* HBOBoardDiagramMgr::setCurrentBoardDiagram(std::string name) {
    std::map<std::string, HBOBoard*>::const_iterator it = m_opened.find(name);
    if (it == m_opened.end() || !it->second)
        return nullptr;
    m_current = it->second;
    return m_current;
}

void HBOBoardDiagramMgr::setCurrentBoardDiagram(HBOBoard* board) {
    if (board)
        m_current = board;
}
