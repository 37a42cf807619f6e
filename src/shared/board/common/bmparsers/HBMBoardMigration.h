// The front of the migration tool: one instance and one board. The caller sets
// source and destination on getBoard(), then calls parse() and write().
#ifndef HBMBOARDMIGRATION_H
#define HBMBOARDMIGRATION_H

class HBMBoard;

class HBMBoardMigration {
public:
    static HBMBoardMigration& getInstance();
    static HBMBoard& getBoard();

    // Reads board.xml, part0_pins.xml and the optional preset.xml of the
    // source, printing a line for each. The models keep what they read, so a
    // second call adds to them.
    bool parse();
    // Writes the three files into the destination; stops at the first failure.
    bool write();

    HBMBoardMigration(const HBMBoardMigration&) = delete;
    HBMBoardMigration& operator=(const HBMBoardMigration&) = delete;

private:
    HBMBoardMigration();
    ~HBMBoardMigration();
};

#endif
