// Members that read and write files. The six of the exchange family answer false whatever they are given and touch no file:
// hosts have always seen them so, and the exchange format is a matter of the store's own operations.
#include <string>
#include <vector>

#include "control/automation/arrays.h"
#include "control/automation/call.h"
#include "files/archive.h"
#include "files/legacy_file.h"
#include "files/symbol_file.h"

namespace orvane {
namespace {

void ReadSymbols(Call& c) {
    ReadSymbolData(c.Store(), c.ctrl.files(), c.Bytes(0));
    c.ReturnBool(true);
}

void PutArchive(Call& c) { c.ReturnBool(ArcWrite(c.Store(), c.ctrl.files(), c.Bytes(0), c.Bytes(1))); }

void GetArchive(Call& c) { c.ReturnBool(ArcRead(c.Store(), c.ctrl.files(), c.Bytes(0))); }

void GetArchivePart(Call& c) {
    std::vector<std::string> codes;
    if (!ReadTexts(c.Value(5), codes)) return;
    c.ReturnBool(ArcRead(c.Store(), c.ctrl.files(), c.Bytes(0), {c.R8(1), c.R8(2), c.R8(3), c.R8(4), codes}));
}

/// Shows the messages of the legacy readers. The control outlives the call, whatever the host does while one stands.
LegacyMessage MessageBoxes(Call& c) {
    return [&ctrl = c.ctrl](std::string_view text, std::string_view title, MessageIcon icon) {
        ctrl.window().ShowMessage(text, title, icon);
    };
}

/// One of the two members has no second argument, which reads as an empty code.
void ReadLegacyFile(Call& c) { c.ReturnBool(LegacyFileRead(c.Store(), c.ctrl.files(), c.Bytes(0), c.Bytes(1), MessageBoxes(c))); }

void ReadLegacyFolder(Call& c) { c.ReturnBool(LegacyDirRead(c.Store(), c.ctrl.files(), c.Bytes(0), c.I2(1), MessageBoxes(c))); }

constexpr MemberRow kRows[] = {
    // Text exchange
    {"GetOrvaFile", 114, "VARIANT_BOOL (BSTR filename)", "Always false; no file is read.", nullptr, "false", "OrvGetOFile", 176},
    {"PutOrvaFile", 115, "VARIANT_BOOL (BSTR filename, BSTR version)", "Always false; no file is written.", nullptr, "false",
     "OrvPutOFile", 177},
    {"PutOrvaFileEx", 120, "VARIANT_BOOL (BSTR filename, BSTR version, VARIANT* code)", "Always false; no file is written.",
     nullptr, "false", "OrvPutOrvaFileEx", 178, "VARIANT_BOOL (BSTR filename, BSTR version, VARIANT* codeArry)"},
    // Archive
    {"OrvPutOFileB", 214, "VARIANT_BOOL (BSTR filename, BSTR version)",
     "Saves the map as a set of archive files, version 1.10 or 1.00; false also when no block has a path.", PutArchive, "false"},
    {"OrvGetOFileB", 215, "VARIANT_BOOL (BSTR filename[2047])",
     "Reads a whole archive into the map, beside what is there already.", GetArchive, "false"},
    {"OrvGetOFileBEx", 216, "VARIANT_BOOL (BSTR filename[2047], double X1, double Y1, double X2, double Y2, VARIANT* codeArry)",
     "Reads the given layers of an archive within an area of block-local map units.", GetArchivePart, "false"},
    // Files of the older kind, one layer and sheet each
    {"RDMDatDirRead", 51, "VARIANT_BOOL (BSTR path, short type)",
     "Reads all line, polygon and point files of a folder; type 1 takes names that begin k-, type 2 r-.", ReadLegacyFolder,
     "false"},
    {"RDMDatFileRead", 63, "VARIANT_BOOL (BSTR filename)", "Reads one file of points, lines or polygons into a new block.",
     ReadLegacyFile, "false"},
    {"RDMDatFileReadEx", 97, "VARIANT_BOOL (BSTR filename, BSTR arcCode)",
     "Reads one such file, with polygons made from the lines of one layer.", ReadLegacyFile, "false"},
    // Symbols
    {"ReadSymbolData", 70, "VARIANT_BOOL (BSTR symfile)",
     "Replaces the symbol table by a file's; true even when there is no file.", ReadSymbols, "true", "OrvGetSymbolData", 199},
};

}  // namespace

std::span<const MemberRow> FileRows() { return kRows; }

}  // namespace orvane
