// Restores the whole parameter store, order, values and hidden flags
// included, when it goes out of scope. Tests may then set and remove
// parameters freely.
#ifndef ZR_TEST_PARAMSTOREGUARD_H
#define ZR_TEST_PARAMSTOREGUARD_H

#include <string>
#include <vector>

#include "HPAParamMgr.h"
#include "HUTConvert.h"

class ParamStoreGuard {
public:
    ParamStoreGuard() {
        for (const HPAParam* p : HPAParamMgr::getParamMgr()->getParams())
            m_saved.push_back({p->getName(), p->getKind(), p->getDescription(), p->getDefaultAsString(),
                               p->getValueAsString(), p->isHidden()});
    }

    ~ParamStoreGuard() {
        HPAParamMgr* mgr = HPAParamMgr::getParamMgr();
        std::vector<std::string> names;
        for (const HPAParam* p : mgr->getParams())
            names.push_back(p->getName());
        for (const std::string& name : names)
            mgr->removeParam(name);
        for (const Saved& s : m_saved) {
            if (s.kind == HPAParam::BOOL)
                mgr->registerBoolParam(s.name, s.description, HUTConvert::toBool(s.defaultValue));
            else
                mgr->registerStringParam(s.name, s.description, s.defaultValue);
            mgr->setValue(s.name, s.value);
            mgr->setHidden(s.name, s.hidden);
        }
    }

    ParamStoreGuard(const ParamStoreGuard&) = delete;
    ParamStoreGuard& operator=(const ParamStoreGuard&) = delete;

private:
    struct Saved {
        std::string name;
        HPAParam::Kind kind;
        std::string description;
        std::string defaultValue;
        std::string value;
        bool hidden;
    };
    std::vector<Saved> m_saved;
};

#endif
