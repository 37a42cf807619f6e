// The store that the design environment attaches to a board, so that a change
// made through the model (a jumper moved, for instance) can be written back at
// once. This library only calls it; the environment supplies the implementation.
#ifndef HBOBOARDDB_H
#define HBOBOARDDB_H

class HBOBoard;

class HBOBoardDB {
public:
    virtual ~HBOBoardDB() {}

    // Writes the given board to the store.
    virtual void saveBoard(HBOBoard* board) = 0;
};

#endif
