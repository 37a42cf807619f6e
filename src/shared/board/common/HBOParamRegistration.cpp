// Registers the library's parameters when the shared library is loaded. This
// is the only place where they are registered; everything else reads them
// through the parameter manager.
#include "HPAParamMgr.h"

namespace {

// Same text for both repository path lists, on purpose.
const char* const kRepoPathsText = "Used to provide access to board part repositories during project creation.";

struct ParamRegistration {
    ParamRegistration() {
        HPAParamMgr* mgr = HPAParamMgr::getParamMgr();
        mgr->registerBoolParam("board.enableSchemaV2", "Allows board data model to work on board schema 2.0", true);
        mgr->registerBoolParam("board.validateXML", "Use validating XML parser when parsing board XML files.", false);
        mgr->registerBoolParam("board.enableBoardIntegratorSupport",
                               "Allows board data model to work on board integrator functionality & tcl commands, "
                               "board 2.0 must be enabled as well.",
                               false);
        mgr->registerBoolParam("board.enableFMCDaughterBoardSupport", "Enable FMC Daughterboard Support.", true);
        mgr->registerStringParam("board.repoPaths", kRepoPathsText, "");
        mgr->registerBoolParam("board.enableDiffCommand", "Enable beta command board::diff_board.", false);
        mgr->registerStringParam("project.boardPartRepoPaths", kRepoPathsText, "");
        mgr->registerBoolParam("board.enable2020Checks",
                               "Temporary param in HEAD, enable new 2020.1 DRC checks on boards when "
                               "board.validateXML is true",
                               false);
        mgr->registerBoolParam("board.usePre2019Dot2Mode",
                               "Revert to legacy behavior of ignoring several I/O port constraint types that can "
                               "appear a board file.",
                               false);
        mgr->registerBoolParam("board.dataProps.stubData",
                               "Use stub data rather than the values in the XML file for BOARD_DATA_PROPS.", false);
        mgr->registerBoolParam("board.dataProps.enableTclProps",
                               "Make board_data_props available as Tcl properties on the board object.", true);
        mgr->registerBoolParam("board.debugMemory", "Turn on debug output", false);
        mgr->registerBoolParam("board.debugBoardRepo", "Turn on debug output for board repo", false);

        for (const char* hidden : {"board.enable2020Checks", "board.usePre2019Dot2Mode", "board.dataProps.stubData",
                                   "board.dataProps.enableTclProps", "board.debugMemory", "board.debugBoardRepo"})
            mgr->setHidden(hidden, true);
    }
};

const ParamRegistration registration;

}  // namespace
