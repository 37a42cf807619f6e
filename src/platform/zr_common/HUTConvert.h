// Text conversions. Boolean words, compared without regard to case:
// true: "1", "true", "yes", "on"; false: "0", "false", "no", "off".
#ifndef ZR_COMMON_HUTCONVERT_H
#define ZR_COMMON_HUTCONVERT_H

#include <string>

class HUTConvert {
public:
    // strict: the text must be the word itself; otherwise blanks around it are allowed.
    // Leaves out alone when the text is no boolean word.
    static bool stringToBoolean(const std::string& text, bool& out, bool strict = true);
    // Not a boolean word: false.
    static bool toBool(const std::string& text);
    // The whole text must be a number (blanks around it allowed).
    static bool stringToFloat(const std::string& text, double& out);
};

#endif
