// Renaming of objects cloned into a merged board: a daughter board's objects get
// the daughter's name as a prefix so that they stay unique beside the base board's.
#ifndef HBOREBASE_H
#define HBOREBASE_H

#include <string>

namespace HBORebase {

// prefix "_" name for a non-empty prefix; the name unchanged otherwise.
inline std::string name(const std::string& prefix, const std::string& old) {
    return prefix.empty() ? old : prefix + "_" + old;
}

// old " (" prefix ")" for a non-empty prefix; the display name unchanged otherwise.
inline std::string displayName(const std::string& prefix, const std::string& old) {
    return prefix.empty() ? old : old + " (" + prefix + ")";
}

}  // namespace HBORebase

#endif
