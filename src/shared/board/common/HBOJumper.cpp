#include "HBOJumper.h"

#include <cstdio>

#include "HBOBoard.h"
#include "HBONativeCacheHook.h"
#include "HBORebase.h"

HBOJumper::HBOJumper(const HBOJumper& other, HBOBoard* board, const std::string& prefix)
    : m_name(HBORebase::name(prefix, other.m_name)),
      m_defaultValue(other.m_defaultValue),
      m_owner(board),
      m_description(other.m_description) {}

HBOJumper::~HBOJumper() {
    HBONativeCacheHook::remove(this);
}

void HBOJumper::setValue(bool value, bool save) {
    m_defaultValue = value;
    // Callers set the owner before asking to save; a jumper without one has no
    // board to save, and bad use must not crash.
    if (save && m_owner)
        m_owner->saveBoard();
}

void HBOJumper::display(unsigned int indent) const {
    std::fprintf(stderr, "%s", std::string(indent, '-').c_str());
    std::fprintf(stderr, "Jumper - name:%s, default_value:%s, description:%s \n", m_name.c_str(),
                 m_defaultValue ? "true" : "false", m_description.c_str());
}
