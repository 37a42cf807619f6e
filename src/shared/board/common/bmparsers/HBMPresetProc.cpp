#include "HBMPresetProc.h"

HBMPresetProc::HBMPresetProc() = default;
HBMPresetProc::~HBMPresetProc() = default;
