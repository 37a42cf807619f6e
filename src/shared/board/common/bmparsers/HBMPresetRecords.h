// The plain records of a preset file as the migration tool keeps it.
#ifndef HBMPRESETRECORDS_H
#define HBMPRESETRECORDS_H

#include <string>
#include <vector>

struct UserParam {
    std::string name;
    std::string value;
    std::string value_type;
};

// A hierarchical parameter. Only its presence is kept: its name and nested
// records are not read, and it is never written.
struct UserHierParam {
    std::string name;
    std::vector<UserHierParam> children;
};

struct IPPresets {
    std::string vendor;
    std::string library;
    std::string name;
    std::string version;
    std::string ip_interface;
    std::vector<UserHierParam> hierParams;
    std::vector<UserParam> userParams;
};

struct PresetProc {
    std::string name;
    std::vector<IPPresets> ips;
};

#endif
