// part0_pins.xml as a flat list of pins: read from a parsed document, edited
// by a caller, and written out in the tool's fixed one-line-per-pin form.
// Pins still in the list are the file model's and are freed with it; a pin
// taken out by deletePin is the caller's.
#ifndef HBMPINSFILE_H
#define HBMPINSFILE_H

#include <iosfwd>
#include <string>

#include "HBMPinsData.h"

class HBMPin;
class HXMLWElement;

class HBMPinsFile : public HBMPinsData {
public:
    HBMPinsFile();
    ~HBMPinsFile();
    HBMPinsFile(const HBMPinsFile&) = delete;
    HBMPinsFile& operator=(const HBMPinsFile&) = delete;

    // A new pin with these values, not yet in the list.
    HBMPin* createPin(std::string name, std::string index, std::string loc);
    // First pin of exactly that name, or null.
    HBMPin* getPin(const std::string& name) const;
    using HBMPinsData::deletePin;
    void deletePin(HBMPin* pin);
    HSTVector<HBMPin*> getAllPins() const { return getPins(); }

    // Adds the pins of `root` to the list. Stops without a word, keeping the
    // pins read so far, at a pin without index or location and at a repeated
    // index or location: the board reader is the one that reports such files.
    bool parse(HXMLWElement* root);
    void write(std::ofstream& out) const;
    // The pin at `position` on one line; nothing for a position past the end.
    void writePin(std::ostream& out, int position) const;
};

#endif
