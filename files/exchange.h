// The text exchange file: a map, or some of its layers, as one text that other systems read and people look at. The format stands
// in exchange_format.h.
#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "platform/files.h"
#include "store/cdigmem.h"

namespace orvane {

/// Lets the program live during long work: it dispatches waiting messages, shows how far the work is (`fraction`, 0 to 1) and
/// answers whether to go on. It may run host code of any kind. Once it has answered false, or emptied the store, the work ends
/// with false.
using ExchangePump = std::function<bool(double fraction)>;

/// Makes the blocks, items, points and texts of a file in the store, beside what is there. The answer is that of the last store
/// operation that ran, and the first that fails ends the read; so it is false for a file that makes nothing, with a block that
/// the store has already, or with a block before any layer. What was made by then stays. False also for a file that cannot be
/// opened or read to its end, without memory, and for a first line that is not exactly magic and version.
///
/// Of a layer come back its key and type, where it is new, and what SetLayDisplay sets; of a block its mesh number, path and
/// origin, truncated to whole numbers. A text gets its own bytes without the last one as its font. An empty field does not count,
/// a line that is too short leaves the fields it lacks at 0 (a text's background at white), and a line of no known key is passed
/// over. A line ends at a 0 byte. Whole numbers beyond 32 bits saturate, other numbers beyond a double read as 0.
///
/// A line of three bytes makes an item, and one of a few more a sub layer, whose records have their fixed size: about a hundred
/// bytes and 1400. So that a file cannot fill the memory, the items with their points and texts take at most 12 times the file
/// and the sub layers at most 50 times, each beside 64 MiB that they may always take; the record that would pass this ends the
/// read with false. No file that ExchWrite wrote comes there. The arrays may hold up to twice that while they grow.
///
/// The pump runs after every line but the first.
bool ExchRead(CDigMem& store, Files& files, std::string_view fileName, const ExchangePump& pump = {});

/// Writes all blocks in drawing order, or those of the layers in `codes` when any are given, as version "1.00" when that is asked
/// for and else as "1.01". False, with no file touched, for a store without blocks; false, with a file that is not whole or has
/// the first line alone, when no layer is among `codes`, when the pump deleted a block, and when the system could not take it
/// all. Grids of meshes, second colours and image positions are not in the file.
///
/// The pump runs after every block. `codes` must outlive the call.
bool ExchWrite(CDigMem& store, Files& files, std::string_view fileName, std::string_view version,
               std::span<const std::string_view> codes = {}, const ExchangePump& pump = {});

}  // namespace orvane
