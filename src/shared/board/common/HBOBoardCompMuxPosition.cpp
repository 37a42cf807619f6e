#include "HBOBoardCompMuxPosition.h"

bool HBOBoardCompMuxPosition::addAddress(const std::string& first, const std::string& second) {
    m_addresses.emplace_back(first, second);
    return true;
}
