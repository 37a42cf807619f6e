// What a read of a board saw of the IPs and interface types it names: filled
// by the board reader when a caller hands one in, so that the caller can tell
// which IP definitions and bus abstractions the board depends on.
#ifndef HBOPARSEDVLNVS_H
#define HBOPARSEDVLNVS_H

#include <map>
#include <set>
#include <string>

class HBOParsedVLNVs {
public:
    // "vendor:library:name:version" of every preset IP and preferred IP.
    std::set<std::string> ipNames;
    // Interface type ("vendor:library:name:version") to the logical port
    // names that the board's port maps use with it.
    std::map<std::string, std::set<std::string>> logicalPorts;

    void addIpName(const std::string& vlnv) { ipNames.insert(vlnv); }
    void addLogicalPorts(const std::string& type, const std::set<std::string>& ports) {
        logicalPorts[type].insert(ports.begin(), ports.end());
    }
};

#endif
