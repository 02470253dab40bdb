// A set of hotspots: one section of a HotSpot file (.hsp), an ini file read and written through the
// ini cache. The set knows whether it differs from the file (dirty); the editors set that flag on
// every change, and Write clears it.
#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "hotspots/hotspot.h"

namespace qrl {

struct TKeyData;

class HotSpots {
public:
    HotSpots() = default;
    virtual ~HotSpots() = default;
    HotSpots(const HotSpots&) = default;
    HotSpots& operator=(const HotSpots&) = default;

    // Loads the set `setName` (cut at its first ".") of `fileName`, following a `Set` redirection.
    // A null or empty argument only empties the set. A missing file reads as an empty one.
    virtual void Read(const char16_t* fileName, const char16_t* setName);
    // Stores the set into section `setName` (null: the set's name) if it is dirty, replacing the
    // whole section. False, and the set stays dirty, when there is no file or section name or a
    // write fails; true when stored or there was nothing to store.
    virtual bool Write(const char16_t* fileName, const char16_t* setName);
    // Called after every load; a place for a subclass to hear of it.
    virtual void Changed() {}

    // Gives the hotspot the next id, appends it and returns the id. Does not mark the set dirty.
    int32_t Add(const HotSpot& spot);
    // Sorts by description, case ignored, keeping the order of equal ones.
    void Sort();
    // Removes every hotspot.
    void Clear();
    // The hotspot of that id, or null.
    HotSpot* Find(int32_t id);
    // Removes the hotspot of that id; false when there is none. Does not mark the set dirty.
    bool Remove(int32_t id);
    // Turns old-form records (a physical key number) into send strings "{name}" of the emulation key
    // that the key map gives that key; marks the set dirty. A key without a name keeps its record
    // type and an empty send string.
    void ConvertKeys(const TKeyData& keys);

    std::list<HotSpot> spots;
    int64_t count = 0;
    uint32_t foreground = kDefaultColour;  // all ones: the emulation's colour
    uint32_t background = kDefaultColour;
    bool needsKeyConversion = false;
    int32_t nextId = 1;
    bool dirty = false;
    std::u16string setName;  // after any redirection, the section that was asked for
    bool enabled = true;     // the `On` key

private:
    void readSection(const std::u16string& fileName, std::u16string_view setName, int depth);
};

// The names of the sets in a file: every section but "version", in file order.
std::vector<std::u16string> HotSpotSetNames(const std::u16string& fileName);

}  // namespace qrl
