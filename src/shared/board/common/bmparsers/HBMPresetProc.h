// The content of a preset file: its schema text and the preset procedures in
// order of addition.
#ifndef HBMPRESETPROC_H
#define HBMPRESETPROC_H

#include <string>
#include <vector>

#include "HBMPresetRecords.h"

class HBMPresetProc {
public:
    HBMPresetProc();
    ~HBMPresetProc();

    const std::string& getSchema() const { return m_schema; }
    void setSchema(const std::string& schema) { m_schema = schema; }

    void addPresetProc(const PresetProc& proc) { m_procs.push_back(proc); }
    std::vector<PresetProc> getPresetProcs() const { return m_procs; }

protected:
    const std::vector<PresetProc>& procs() const { return m_procs; }

private:
    std::string m_schema;
    std::vector<PresetProc> m_procs;
};

#endif
