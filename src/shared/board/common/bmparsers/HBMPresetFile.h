// preset.xml as plain records, read from a parsed document and written out in
// a fixed indented form. The written form drops the "user_parameters" wrapper,
// value types and hierarchical parameters, so it is not meant to be read back.
#ifndef HBMPRESETFILE_H
#define HBMPRESETFILE_H

#include <iosfwd>

#include "HBMPresetProc.h"

class HXMLWElement;

class HBMPresetFile : public HBMPresetProc {
public:
    HBMPresetFile();
    ~HBMPresetFile();

    // Adds the preset procedures of `root`; false only for a null root.
    bool parse(HXMLWElement* root);
    // False for a null element; reads nothing of the parameter otherwise.
    bool readHierParam(HXMLWElement* element, UserHierParam& param);
    void write(std::ofstream& out) const;
    // Writes nothing: write() emits the presets itself.
    void writePreset(std::ostream& out) const;

private:
    // False, leaving `ip` empty, for a null element or one that is not "ip".
    bool readPresetDetails(HXMLWElement* element, IPPresets& ip);
};

#endif
