// Which boards, and which parts of boards, count as schema 2.
#include <gtest/gtest.h>

#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "HBOBoardUtils.h"
#include "HBOBusIf.h"
#include "HBOModelPort.h"

using HBOBoardUtils::isSchema20OrGreater;
using HBOBoardUtils::isV2SchemaBoard;

TEST(SchemaBoard, DecidedByTheBoardsSchemaVersion) {
    HBOBoard board;
    struct Case {
        const char* version;
        bool v2;
    };
    for (const Case& c : {Case{"2.0", true}, Case{"2.1", true}, Case{"3.0", true}, Case{"10.0", true},
                          Case{"1.0", false}, Case{"1.1", false}, Case{"", false}, Case{"2", false},
                          Case{"2.0.1", false}, Case{"2.00", false}}) {
        board.setBoardSchemaVersion(c.version);
        EXPECT_EQ(isV2SchemaBoard(&board), c.v2) << c.version;
        EXPECT_EQ(isSchema20OrGreater(&board), c.v2) << c.version;
    }
    EXPECT_FALSE(isV2SchemaBoard(static_cast<const HBOBoard*>(nullptr)));
    EXPECT_FALSE(isSchema20OrGreater(nullptr));
}

TEST(SchemaBoard, PartsOfABoardFollowTheirBoardAndNullLinksGiveFalse) {
    HBOBoard board;
    board.setBoardSchemaVersion("2.1");
    HBOBoardComponent component;
    HBOBusIf busIf;
    HBOModelPort port;

    EXPECT_FALSE(isV2SchemaBoard(static_cast<const HBOBoardComponent*>(nullptr)));
    EXPECT_FALSE(isV2SchemaBoard(static_cast<const HBOBusIf*>(nullptr)));
    EXPECT_FALSE(isV2SchemaBoard(static_cast<const HBOModelPort*>(nullptr)));

    // Unlinked: every step of the way is null.
    EXPECT_FALSE(isV2SchemaBoard(&component));
    EXPECT_FALSE(isV2SchemaBoard(&busIf));
    EXPECT_FALSE(isV2SchemaBoard(&port));

    port.setOwner(&busIf);
    busIf.setOwnerComponent(&component);
    EXPECT_FALSE(isV2SchemaBoard(&port));

    component.setBoard(&board);
    EXPECT_TRUE(isV2SchemaBoard(&component));
    EXPECT_TRUE(isV2SchemaBoard(&busIf));
    EXPECT_TRUE(isV2SchemaBoard(&port));

    board.setBoardSchemaVersion("1.0");
    EXPECT_FALSE(isV2SchemaBoard(&component));
    EXPECT_FALSE(isV2SchemaBoard(&busIf));
    EXPECT_FALSE(isV2SchemaBoard(&port));

    // Unlink again so that no destructor follows a pointer into another object.
    port.setOwner(nullptr);
    busIf.setOwnerComponent(nullptr);
    component.setBoard(nullptr);
}
