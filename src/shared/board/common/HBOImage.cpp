#include "HBOImage.h"

#include "HBONativeCacheHook.h"
#include "HBORebase.h"

HBOImage::HBOImage(const std::string& name, const std::string& displayName, const std::string& description,
                   const std::string& resolution, const std::string& subType)
    : m_name(name),
      m_displayName(displayName),
      m_description(description),
      m_resolution(resolution),
      m_subType(subType) {}

HBOImage::HBOImage(const HBOImage& other, const std::string& prefix) : HBOImage(other) {
    m_name = HBORebase::name(prefix, other.m_name);
}

HBOImage::~HBOImage() {
    HBONativeCacheHook::remove(this);
}
