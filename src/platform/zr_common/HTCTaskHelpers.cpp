#include "HTCTaskHelpers.h"

std::string HTCTaskHelpers::brace(const std::string& text) { return "{" + text + "}"; }
