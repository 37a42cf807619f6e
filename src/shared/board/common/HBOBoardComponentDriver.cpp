#include "HBOBoardComponentDriver.h"

HBOBoardComponentDriver::HBOBoardComponentDriver(const HBOBoardComponentDriver& other,
                                                 HBOBoardComponent* component)
    : HBOBoardComponentDriver(other) {
    m_boardComponent = component;
}

void HBOBoardComponentDriver::addFile(const std::string& key, const std::string& value) {
    m_files[key] = value;
}
