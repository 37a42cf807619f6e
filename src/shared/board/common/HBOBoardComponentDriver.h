// A software driver that comes with a board component.
#ifndef HBOBOARDCOMPONENTDRIVER_H
#define HBOBOARDCOMPONENTDRIVER_H

#include <map>
#include <string>
#include <vector>

class HBOBoardComponent;

class HBOBoardComponentDriver {
public:
    HBOBoardComponentDriver() = default;
    HBOBoardComponentDriver(const HBOBoardComponentDriver&) = default;
    HBOBoardComponentDriver& operator=(const HBOBoardComponentDriver&) = default;
    // Copy of every field for another component.
    HBOBoardComponentDriver(const HBOBoardComponentDriver& other, HBOBoardComponent* component);

    const std::string& getName() const { return m_name; }
    void setName(const std::string& name) { m_name = name; }
    const std::string& getVersion() const { return m_version; }
    void setVersion(const std::string& version) { m_version = version; }
    const std::string& getVendor() const { return m_vendor; }
    void setVendor(const std::string& vendor) { m_vendor = vendor; }
    const std::string& getPreCompiled() const { return m_preCompiled; }
    void setPreCompiled(const std::string& preCompiled) { m_preCompiled = preCompiled; }
    const std::vector<std::string>& getOs() const { return m_os; }
    void setOs(const std::vector<std::string>& os) { m_os = os; }
    const std::vector<std::string>& getPlatform() const { return m_platforms; }
    void setPlatform(const std::vector<std::string>& platforms) { m_platforms = platforms; }
    const std::vector<std::string>& getProcessorArchitecture() const { return m_processorArchitectures; }
    void setProcessorArchitecture(const std::vector<std::string>& archs) { m_processorArchitectures = archs; }
    const std::string& getDescription() const { return m_description; }
    void setDescription(const std::string& description) { m_description = description; }
    const std::map<std::string, std::string>& getFiles() const { return m_files; }
    void addFile(const std::string& key, const std::string& value);
    const std::string& getDriverPath() const { return m_driverPath; }
    void setDriverPath(const std::string& path) { m_driverPath = path; }
    HBOBoardComponent* getBoardComponent() const { return m_boardComponent; }
    void setBoardComponent(HBOBoardComponent* component) { m_boardComponent = component; }

private:
    std::string m_name;
    std::string m_version;
    std::string m_vendor;
    std::string m_preCompiled;
    std::vector<std::string> m_os;
    std::vector<std::string> m_platforms;
    std::vector<std::string> m_processorArchitectures;
    std::string m_description;
    std::map<std::string, std::string> m_files;
    std::string m_driverPath;
    HBOBoardComponent* m_boardComponent = nullptr;
};

#endif
