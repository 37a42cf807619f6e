#include "HBMPresetFile.h"

#include <fstream>
#include <ostream>

#include "HBMElementText.h"
#include "HXMLWElement.h"

using HBMElementText::attr;
using HBMElementText::hasTag;

HBMPresetFile::HBMPresetFile() = default;
HBMPresetFile::~HBMPresetFile() = default;

bool HBMPresetFile::parse(HXMLWElement* root) {
    if (!root)
        return false;
    setSchema(attr(root, "schema"));
    for (int c = 0, nc = root->getChildCount(); c < nc; ++c) {
        HXMLWElement* e = root->getChild(c);
        if (!e || !hasTag(e, "ip_preset"))
            continue;
        PresetProc proc;
        proc.name = attr(e, "preset_proc_name");
        // Every child gets a record, an empty one when it is not an "ip".
        for (int i = 0, ni = e->getChildCount(); i < ni; ++i) {
            IPPresets ip;
            readPresetDetails(e->getChild(i), ip);
            proc.ips.push_back(ip);
        }
        addPresetProc(proc);
    }
    return true;
}

bool HBMPresetFile::readPresetDetails(HXMLWElement* element, IPPresets& ip) {
    if (!element || !hasTag(element, "ip"))
        return false;
    ip.vendor = attr(element, "vendor");
    ip.library = attr(element, "library");
    ip.name = attr(element, "name");
    ip.version = attr(element, "version");
    ip.ip_interface = attr(element, "ip_interface");
    for (int c = 0, nc = element->getChildCount(); c < nc; ++c) {
        HXMLWElement* params = element->getChild(c);
        if (!params || !hasTag(params, "user_parameters"))
            continue;
        for (int i = 0, ni = params->getChildCount(); i < ni; ++i) {
            HXMLWElement* p = params->getChild(i);
            if (!p)
                continue;
            if (hasTag(p, "user_hier_parameter")) {
                UserHierParam hier;
                readHierParam(p, hier);
                ip.hierParams.push_back(hier);
            } else {
                ip.userParams.push_back(UserParam{attr(p, "name"), attr(p, "value"), attr(p, "value_type")});
            }
        }
    }
    return true;
}

bool HBMPresetFile::readHierParam(HXMLWElement* element, UserHierParam& /*param*/) { return element != nullptr; }

void HBMPresetFile::write(std::ofstream& out) const {
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>\n\n";
    out << "<ip_presets schema=\"" << getSchema() << "\">\n";
    for (const PresetProc& proc : procs()) {
        out << "  <ip_preset preset_proc_name=\"" << proc.name << "\">\n";
        for (const IPPresets& ip : proc.ips) {
            out << "    <ip vendor=\"" << ip.vendor << "\" library=\"" << ip.library << "\" name=\"" << ip.name
                << "\" version=\"" << ip.version << "\" ip_interface=\"" << ip.ip_interface << "\">\n";
            for (const UserParam& p : ip.userParams)
                out << "      <user_parameter name=\"" << p.name << "\" value=\"" << p.value << "\"/>\n";
            out << "    </ip>\n";
        }
        out << "  </ip_preset>\n";
    }
    out << "</ip_presets>\n";
}

void HBMPresetFile::writePreset(std::ostream& /*out*/) const {}
