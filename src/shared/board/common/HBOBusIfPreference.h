// A preferred IP core for a board interface or a component mode, with its preset and order.
#ifndef HBOBUSIFPREFERENCE_H
#define HBOBUSIFPREFERENCE_H

#include <string>

class HBOBoard;

class HBOBusIfPreference {
public:
    HBOBusIfPreference() = default;
    // All fields copied; the owner becomes board.
    HBOBusIfPreference(const HBOBusIfPreference& other, HBOBoard* board);
    HBOBusIfPreference(const HBOBusIfPreference& other) = default;
    HBOBusIfPreference& operator=(const HBOBusIfPreference& other) = default;
    ~HBOBusIfPreference();

    std::string& getMajorGroup() { return m_majorGroup; }
    const std::string& getMajorGroup() const { return m_majorGroup; }
    bool setMajorGroup(const std::string& v);
    std::string& getMinorGroup() { return m_minorGroup; }
    const std::string& getMinorGroup() const { return m_minorGroup; }
    bool setMinorGroup(const std::string& v);
    std::string getDefaultIpVlnv() const { return m_defaultIpVlnv; }
    bool setDefaultIpVlnv(const std::string& v);
    std::string& getPresetProc() { return m_presetProc; }
    const std::string& getPresetProc() const { return m_presetProc; }
    bool setPresetProc(const std::string& v);
    std::string& getPresetFile() { return m_presetFile; }
    const std::string& getPresetFile() const { return m_presetFile; }
    bool setPresetFile(const std::string& v);
    const std::string& getName() const { return m_name; }
    bool setName(const std::string& v);
    const std::string& getPrefName() const { return m_prefName; }
    bool setPrefName(const std::string& v);
    std::string& getVendor() { return m_vendor; }
    const std::string& getVendor() const { return m_vendor; }
    bool setVendor(const std::string& v);
    std::string& getLibrary() { return m_library; }
    const std::string& getLibrary() const { return m_library; }
    bool setLibrary(const std::string& v);
    std::string& getVersion() { return m_version; }
    const std::string& getVersion() const { return m_version; }
    bool setVersion(const std::string& v);
    int getOrder() const { return m_order; }
    bool setOrder(int order);
    HBOBoard* getOwner() const { return m_owner; }
    bool setOwner(HBOBoard* owner);

    // A preference carries no parameters: always false, out untouched.
    bool getParamValue(const std::string& name, std::string& out) const;

    void display(int indent) const;

private:
    std::string m_majorGroup;
    std::string m_minorGroup;
    std::string m_defaultIpVlnv;
    std::string m_presetProc;
    std::string m_presetFile;
    std::string m_name;
    std::string m_prefName;
    std::string m_vendor;
    std::string m_library;
    std::string m_version;
    int m_order = 0;
    HBOBoard* m_owner = nullptr;
};

#endif
