// The English texts of the board library's message ids. One placeholder per
// argument, in argument order and of the id's own kind (%s or %d).
#include <cstring>
#include <string>
#include <vector>

#include "ComMsgMgr.h"

namespace {

struct CatalogueEntry {
    const char* id;
    const char* format;  // the placeholders of the id, as callers send it
    const char* text;
};

const CatalogueEntry kCatalogue[] = {
    {"49-4", "%s%s", "Could not read the board file '%s'%s."},
    {"49-35", "%s%s",
     "Board '%s' was selected through the short name '%s'. Short names are deprecated; use the full board "
     "name with vendor and version."},
    {"49-36", "%s", "The file '%s' does not exist."},
    {"49-37", "%s", "Interface '%s' has a type that is not of the form vendor:library:name:version."},
    {"49-38", "%s%s",
     "Unexpected element '%s' among the parameters of interface '%s'; only 'parameter' is allowed there."},
    {"49-39", "%s%s",
     "Unexpected element '%s' among the port maps of interface '%s'; only 'port_map' is allowed there."},
    {"49-43", "%s", "Unexpected element '%s' in the constraints file; only 'PIN' is allowed there."},
    {"49-44", "%s", "An error was caught: %s"},
    {"49-46", "%s%s", "The board start-up script '%s' failed:\n%s"},
    {"49-54", "%s", "The board file '%s' does not exist."},
    {"49-55", "%s", "The pin file '%s' does not exist."},
    {"49-56", "%s%s", "Failed to parse the board file '%s'%s."},
    {"49-57", "%s%s", "Failed to parse the pin file '%s': %s"},
    {"49-59", "%s", "An unexpected error ended the reading of the board file '%s'."},
    {"49-62", "%s", "The preset file '%s' does not exist."},
    {"49-63", "%s%s", "Failed to parse the preset file '%s': %s"},
    {"49-69", "%s%s", "Board file '%s': %s"},
    {"49-70", "", "The board was found through its legacy name; the project uses it under its current name."},
    {"49-71", "%s%s", "The board '%s' cannot be set on the project. It was not found in the board repositories '%s'."},
    {"49-73", "",
     "The user board repository cannot be taken from 'board.repoPaths' while 'project.boardPartRepoPaths' "
     "holds a value."},
    {"49-77", "%s",
     "The section 'ip_associated_rules' needs board schema 2.1 or later; this board file has schema '%s'."},
    {"49-78", "%s", "The base board '%s' is an integrated board itself and cannot be used as a base."},
    {"49-79", "%s", "The daughter board '%s' is an integrated board itself and cannot be connected."},
    {"49-80", "%s%s", "The base board '%s' of the integrated board '%s' was not found."},
    {"49-81", "%s%s", "The daughter board '%s' of the integrated board '%s' was not found."},
    {"49-82", "%s", "The base board '%s' was not found."},
    {"49-84", "%s", "The board '%s' is an integrated board already."},
    {"49-85", "", "No base board was given for the integrated board."},
    {"49-86", "", "The base board of the integrated board is missing."},
    {"49-91", "%s", "The board repository directory '%s' does not exist."},
    {"49-97", "%s", "Board file '%s': 'compatible_board_revisions' lists no revision."},
    {"49-98", "%s%s", "Pin file '%s': pin '%s' has no 'index' attribute."},
    {"49-99", "%s%s", "Board file '%s': a connection map of connection '%s' lacks an index attribute."},
    {"49-100", "%s%s%s", "The attribute '%s' of the preferred IP '%s' is missing in board file '%s'."},
    {"49-105", "%s%d%s", "XML error in '%s' at line %d: %s"},
    {"49-106", "%s%d%s", "Fatal XML error in '%s' at line %d: %s"},
    {"49-108", "%s",
     "Board file '%s': the root element lacks 'vendor' or 'name', or 'file_version' is missing."},
    {"49-109", "%s%s", "Board file '%s': the part information '%s' could not be read."},
    {"49-110", "%s", "The packed file '%s' could not be opened."},
    {"49-111", "%s", "No root element was read from '%s'."},
    {"49-112", "%s", "An unknown error occurred while validating '%s'."},
    {"49-113", "%s%s", "Validating '%s' with the grammar '%s'."},
    {"49-114", "%s", "Validating '%s' without a grammar."},
    {"49-115", "%s%s", "XML error '%s' while validating '%s'."},
    {"49-117", "%s", "The file '%s' does not refer to a DTD; it was not validated."},
    {"49-118", "%s%s", "Member '%s' appears more than once in power rail '%s'."},
    {"49-119", "%s", "Power rail '%s' is defined more than once."},
    {"49-120", "%s%s", "Rail '%s' of power rail '%s' is already used by another rail of this section."},
    {"49-121", "%s", "Power rail '%s' names itself as a member."},
    {"49-122", "%s", "Power rail '%s' has a name that is already used as a member."},
    {"49-123", "%s%s", "Rail '%s' of power rail '%s' is not defined before it is used."},
    {"49-124", "%s%s", "Supply '%s' of power rail '%s' is already used by another rail of this section."},
    {"49-125", "%s%s", "Supply '%s' of power rail '%s' is a defined power rail; name it as a rail instead."},
    {"49-126", "%s%s", "Board '%s' has no component '%s'."},
    {"49-127", "%s%s", "Component '%s' of board '%s' is not a connector."},
    {"49-133", "%s%s", "Interface '%s' names the preset procedure '%s', which is not in the preset file."},
    {"49-134", "%s%s", "The phases of member '%s' of power rail '%s' are out of range."},
    {"49-135", "%s%s", "Member '%s' of power rail '%s' is used twice."},
    {"49-136", "%s%s", "Phased source '%s' of power rail '%s' is used before it is defined."},
    {"49-141", "%s%d%d", "Phased power rail '%s' has %d phases, but no member takes any of its %d phases."},
    {"49-142", "%d%s%s", "The %d phases of power rail '%s' differ from the phases its members take: %s"},
    {"49-145", "%s", "The GT flow interface master '%s' is not defined."},
    {"49-146", "%s", "Interface '%s' appears more than once on the component."},
    {"49-147", "%s%s%s", "The part '%s' of the pin file '%s' differs from the board's part '%s'."},
    {"49-148", "%s%s%s", "A mode of component '%s' names interface '%s', which is not on the component (board file '%s')."},
    {"49-149", "%s%s%s%s", "Component '%s' of board file '%s' has no modes; for interface '%s' the default mode '%s' was made."},
    {"49-150", "%s%s%s%s",
     "Port '%s' of interface '%s' in board file '%s' is already used by interface '%s' of the same component."},
    {"49-151", "%s",
     "The project uses a user repository copy of board '%s', which the installation carries as well."},
    {"49-152", "%s%s", "The part '%s' could not be set on board '%s'."},
    {"49-153", "%s%s", "Clock interface '%s' in board file '%s' has no 'frequency' parameter."},
    {"49-900", "%s%s", "The file '%s' was not read: %s."},
    {"49-901", "%s%s", "The XML file '%s' was refused: it breaks the bound on the %s."},
    {"17-2515", "%s", "Could not create the Python object for the native type '%s'."},
    {"17-2518", "", "The Python argument has no 'nativeObjPtr' attribute."},
    {"17-2519", "", "Wrong number of arguments for the container operation."},
    {"17-2520", "", "The container index is out of range."},
    {"17-2525", "", "The container operation failed."},
    {"17-3635", "", "'PyContainerResultDisplayLimit' in __main__ is not an integer."},
};

const CatalogueEntry* findEntry(const std::string& id) {
    for (const CatalogueEntry& e : kCatalogue)
        if (id == e.id)
            return &e;
    return nullptr;
}

}  // namespace

const char* ComMsgMgr::catalogueText(const std::string& id) {
    const CatalogueEntry* e = findEntry(id);
    return e ? e->text : nullptr;
}

const char* ComMsgMgr::catalogueFormat(const std::string& id) {
    const CatalogueEntry* e = findEntry(id);
    return e ? e->format : nullptr;
}

std::vector<std::string> ComMsgMgr::catalogueIds() {
    std::vector<std::string> ids;
    for (const CatalogueEntry& e : kCatalogue)
        ids.emplace_back(e.id);
    return ids;
}
