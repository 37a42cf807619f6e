// The host's parameter store.
#ifndef ZR_COMMON_HPAPARAMMGR_H
#define ZR_COMMON_HPAPARAMMGR_H

#include <map>
#include <memory>
#include <string>
#include <vector>

class HPAParam {
public:
    enum Kind { BOOL, STRING };

    HPAParam(const std::string& name, Kind kind, const std::string& description, const std::string& defaultValue);
    virtual ~HPAParam();

    const std::string& getName() const { return m_name; }
    Kind getKind() const { return m_kind; }
    const char* getKindName() const { return m_kind == BOOL ? "bool" : "string"; }
    const std::string& getDescription() const { return m_description; }
    const std::string& getDefaultAsString() const { return m_default; }
    const std::string& getValueAsString() const { return m_value; }
    virtual bool getValueAsBool() const;
    bool isHidden() const { return m_hidden; }
    void setHidden(bool h) { m_hidden = h; }

    // False when a boolean parameter is given a text that is no boolean word.
    bool setValueFromString(const std::string& value);
    void resetToDefault() { m_value = m_default; }

private:
    std::string m_name;
    Kind m_kind;
    std::string m_description;
    std::string m_default;
    std::string m_value;
    bool m_hidden = false;
};

class HPAParamMgr {
public:
    static HPAParamMgr* getParamMgr();

    // Registering a name twice keeps the first registration and returns false.
    bool registerBoolParam(const std::string& name, const std::string& description, bool defaultValue);
    bool registerStringParam(const std::string& name, const std::string& description, const std::string& defaultValue);
    bool setHidden(const std::string& name, bool hidden);

    bool paramExists(const std::string& name) const;
    HPAParam* findParam(const std::string& name) const;
    // Missing parameters read as false and as the empty text.
    bool getValueAsBool(const std::string& name) const;
    std::string getValueAsString(const std::string& name) const;

    bool setValue(const std::string& name, const std::string& value);
    bool resetValue(const std::string& name);
    bool removeParam(const std::string& name);

    // Parameters in registration order.
    std::vector<const HPAParam*> getParams() const;

private:
    HPAParamMgr() = default;
    static HPAParamMgr* makeWithHostParams();
    std::vector<std::unique_ptr<HPAParam>> m_params;
    std::map<std::string, HPAParam*> m_byName;
};

#endif
