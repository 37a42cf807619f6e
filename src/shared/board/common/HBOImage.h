// A picture of a board or component.
#ifndef HBOIMAGE_H
#define HBOIMAGE_H

#include <string>

class HBOImage {
public:
    HBOImage() = default;
    HBOImage(const std::string& name, const std::string& displayName, const std::string& description,
             const std::string& resolution, const std::string& subType);
    HBOImage(const HBOImage&) = default;
    HBOImage& operator=(const HBOImage&) = default;
    // Rebase copy: all fields copied, the name prefixed.
    HBOImage(const HBOImage& other, const std::string& prefix);
    ~HBOImage();

    const std::string& getName() const { return m_name; }
    void setName(const std::string& name) { m_name = name; }
    const std::string& getDisplayName() const { return m_displayName; }
    void setDisplayName(const std::string& name) { m_displayName = name; }
    const std::string& getDescription() const { return m_description; }
    void setDescription(const std::string& description) { m_description = description; }
    const std::string& getResolution() const { return m_resolution; }
    void setResolution(const std::string& resolution) { m_resolution = resolution; }
    const std::string& getSubType() const { return m_subType; }
    void setSubType(const std::string& subType) { m_subType = subType; }

private:
    std::string m_name;
    std::string m_displayName;
    std::string m_description;
    std::string m_resolution;
    std::string m_subType;
};

#endif
