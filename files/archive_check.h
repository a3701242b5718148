// Looking an archive through without taking it into a store.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "files/archive.h"

namespace orvane {

enum class ArcSeverity : std::uint8_t {
    Warning,  ///< a read takes everything, but not as somebody may expect
    Error,    ///< the archive cannot be read, or not all of it, or not the same by its index
};

enum class ArcFault : std::uint8_t {
    Name,         ///< not the name of a data file
    Missing,      ///< a file of the set is not there
    NotOpened,    ///< it is there but cannot be read
    Title,        ///< it does not begin as it should
    Version,      ///< a version that is not known, or other than the data file's
    LeftOver,     ///< bytes behind the last record
    Counts,       ///< counts that the file cannot hold or that do not agree with the data
    Layer,        ///< a layer record that a read drops
    BlockRange,   ///< a block's items are not the ones behind those of the block before
    BlockItems,   ///< items of the data file under another block than in the index
    BlockBounds,  ///< bounds of a block in the index that do not hold its items' points, or are no numbers
    ItemOffset,   ///< an index record that does not point at its item
    ItemRect,     ///< a rectangle that is not that of the item
    CutOff,       ///< data that is no whole item
    NoLayer,      ///< items of a code without a layer
    NoBlock,      ///< a path and origin that a read drops: of a block without items or of a code without a layer
    PathTwice,    ///< several paths and origins of one block
    Origin,       ///< an origin that is no place
    NeverRead,    ///< a form that is written but not read back
    NoItems,      ///< a read answers false for nothing but layers
};

struct ArcFinding {
    ArcFault fault = ArcFault::Name;
    ArcSeverity severity = ArcSeverity::Error;
    std::string words;      ///< one line of ASCII, but for codes and names, which are the bytes that stand in the files
    std::int64_t more = 0;  ///< how many like it are not told
};

/// What is in the files, as they tell it.
struct ArcCounts {
    std::int64_t layers = 0;
    std::int64_t blocks = 0;  ///< by the index; in a text archive runs of items with one key
    std::int64_t items = 0;
    std::int64_t points = 0;
    std::int64_t texts = 0;    ///< items with a text
    std::int64_t meshes = 0;   ///< items with a grid
    std::int64_t paths = 0;    ///< blocks with a path
    std::uint64_t keySum = 0;  ///< of ArcKeyNumber over all items: tells other keys apart, whatever their order
};

/// A number made of an item's key; equal keys have equal ones, others hardly ever.
std::uint64_t ArcKeyNumber(std::string_view code, std::int32_t meshNo);

struct ArcReport {
    std::string version;  ///< the data file's, empty when it tells none that is known
    bool text = false;
    ArcCounts counts;
    std::vector<ArcFinding> findings;  ///< a few of each kind, the rest counted
    bool finished = false;             ///< false when cancelled or out of memory: there may be more to find

    bool HasErrors() const;
    /// Whether something in the files is not in the store that reads them: what is wrong with the places and rectangles in the
    /// index alone is made anew.
    bool LosesData() const;
    bool Has(ArcFault fault) const;
};

/// Reads every file of the archive of a data file and reports whatever does not fit: files that are missing or of another
/// version, wrong titles, bytes left over, counts, offsets, ranges and rectangles of the index that are not those of the data,
/// items cut off, lines that are no item's, codes without a layer, more blocks than a map can have, origins without a block. A
/// text archive's index is asked for its version only, as in a read.
///
/// The data goes through item by item: memory follows the largest item, the layers and the blocks. Damaged files are safe.
/// `progress` as in ArcRead.
ArcReport ArcCheck(Files& files, std::string_view filename, const ArcProgress& progress = {});

}  // namespace orvane
