// The parts of an archive, one file each. All functions read and write whole files by their full names and answer false where
// they cannot; archive.h puts them together. The layout of the files is told in archive_format.h.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "files/archive.h"
#include "files/archive_format.h"
#include "files/packed_sink.h"
#include "files/packed_source.h"
#include "store/dat_lookup.h"

namespace orvane {

/// Asks the host from time to time whether to go on.
class ArcWatch {
public:
    ArcWatch(CDigMem& store, const ArcProgress& progress) : store_(store), progress_(progress), resetCount_(store.ResetCount()) {}

    /// One more record. False when the host cancelled or the store was emptied; `asked` tells that host code ran.
    template <class Done>
    bool GoesOn(Done done, bool& asked) {
        asked = progress_ && ++records_ % kRecordsPerQuestion == 0;
        return !asked || (progress_(done()) && store_.ResetCount() == resetCount_);
    }

private:
    static constexpr std::uint32_t kRecordsPerQuestion = 1000;

    CDigMem& store_;
    const ArcProgress& progress_;
    std::uint32_t resetCount_;
    std::uint32_t records_ = 0;
};

/// Whether the file begins with the title, in any case. One too short for a header has it as far as it goes, as it always was.
bool HasTitle(InputFile& file, std::string_view title);
/// The header of a binary file.
void WriteHeader(PackedSink& sink, std::string_view title, ArcVersion version);

// --- Layers (archive_layers.cpp) ------------------------------------------------------------------------------------------
/// Adds the layers that the store does not have. False, with those before kept, when the table is full.
bool ArcReadLayers100(CDigMem& store, Files& files, std::string_view name);
bool ArcReadLayers110(CDigMem& store, Files& files, std::string_view name);
/// Those of the codes in `leaveOut` are not written. False, with no file made, when there is no layer.
bool ArcWriteLayers(const CDigMem& store, Files& files, std::string_view name, ArcVersion version,
                    std::span<const std::string> leaveOut = {});

// --- Index (archive_index.cpp) --------------------------------------------------------------------------------------------
/// An index file, open: its block records are held, the item records stay in the file until they are asked for. Without items
/// no block record is held either.
struct IdxFile {
    std::int32_t nBlocks = 0;
    std::int32_t nItems = 0;
    GrowArray<IdxBlockRec> blocks;
    std::unique_ptr<InputFile> file;
};
/// False also when the file cannot hold what its counts tell, or a block claims items that the table does not have.
bool ArcReadIndex(Files& files, std::string_view name, IdxFile& index);
/// False, with no file made, when there is no block.
bool ArcWriteIndex(Files& files, std::string_view name, ArcVersion version, const IdxTables& tables);
/// The item record at `number`. False when the file ends before it.
bool ReadIdxItem(PackedSource& source, const IdxFile& index, std::int32_t number, IdxItemRec& item);

// --- Selection (archive_select.cpp) ---------------------------------------------------------------------------------------
/// An item to be read.
struct IdxSelected {
    std::int32_t number = 0;
    std::int32_t offset = 0;
};
/// The items that the filter selects, by ascending number. False without memory.
bool SelectIdxItems(const IdxFile& index, const ArcFilter& filter, GrowArray<IdxSelected>& selected);

// --- Paths and origins (archive_manage.cpp) -------------------------------------------------------------------------------
/// Gives the blocks that the store has their path and origin. A missing file is true, any other failed open false.
bool ArcReadManage(CDigMem& store, Files& files, std::string_view name);
/// False, with no file made, when no block has a path.
bool ArcWriteManage(const CDigMem& store, Files& files, std::string_view name, ArcVersion version);

// --- Data (archive_data_bin.cpp, archive_data_text.cpp) -------------------------------------------------------------------
/// Reads items until the file ends or one cannot be taken. True when at least one was stored and the reading did not end for a
/// full index or by the host.
bool ArcReadBin100(CDigMem& store, Files& files, std::string_view name, ArcWatch& watch);
bool ArcReadBin110(CDigMem& store, Files& files, std::string_view name, ArcWatch& watch);
/// Reads the selected items only.
bool ArcReadBinSel100(CDigMem& store, Files& files, std::string_view name, std::span<const IdxSelected> selected,
                      ArcWatch& watch);
bool ArcReadBinSel110(CDigMem& store, Files& files, std::string_view name, std::span<const IdxSelected> selected,
                      ArcWatch& watch);
/// Refuses what ArcWriteText100 writes: it takes the first line to be the bare title, and that has the version behind it.
bool ArcReadText100(CDigMem& store, Files& files, std::string_view name, ArcWatch& watch);
bool ArcReadText110(CDigMem& store, Files& files, std::string_view name, ArcWatch& watch);

// --- Data (archive_bin_write.cpp, archive_text_write.cpp) -----------------------------------------------------------------
/// How large a binary data file of the store is.
std::uint64_t BinDataSize_bytes(const CDigMem& store, ArcVersion version);
/// Offsets have 32 bits.
inline constexpr std::uint64_t kMaxBinData_bytes = 2147483647;
/// Write every item of every block in use and gather the index, in the text form its counts alone. True when a block was written;
/// without any block record no file is made. REQUIRES, for the binary form: BinDataSize_bytes within kMaxBinData_bytes.
bool ArcWriteBin100(const CDigMem& store, Files& files, std::string_view name, IdxTables& tables, ArcWatch& watch);
bool ArcWriteBin110(const CDigMem& store, Files& files, std::string_view name, IdxTables& tables, ArcWatch& watch);
bool ArcWriteText100(const CDigMem& store, Files& files, std::string_view name, IdxTables& tables, ArcWatch& watch);
bool ArcWriteText110(const CDigMem& store, Files& files, std::string_view name, IdxTables& tables, ArcWatch& watch);

}  // namespace orvane
