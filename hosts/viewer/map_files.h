// The map and the disk: opening, saving, reading beside what is there, writing in other forms.
//
// The functions that ask end in a dialog with the operator; the others do the work and answer, so that tests and the command line
// can call them without one. The last good archive is never touched before the new one is whole (hosts/common).
#pragma once

#include <QObject>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "foreign/export.h"
#include "foreign/import.h"
#include "foreign/plane_system.h"
#include "hosts/common/archive_save.h"
#include "hosts/viewer/edit_history.h"
#include "hosts/viewer/place_label.h"

namespace orvane {

/// What a file is, by its name and its first bytes.
enum class SourceKind { Archive, Legacy, Exchange, Vector };
SourceKind KindOfSource(const QString& path);
/// How several are read: as an archive where one is among them, which is refused, else as the first.
SourceKind KindOfSources(const QStringList& sources);

class WorkProgress;

class MapFiles : public QObject {
    Q_OBJECT

public:
    /// All must outlive this; `window` is the one that dialogs belong to.
    MapFiles(OrvaneWidget& map, EditHistory& history, PlaceLabel& place, QWidget& window);

    /// The archive that the map is saved to, empty when it has none.
    const QString& Path() const { return path_; }
    /// What shows the map again: its archive, or else what it was opened from.
    QStringList Sources() const { return path_.isEmpty() ? opened_ : QStringList{path_}; }
    /// What the map is called in titles.
    const QString& Name() const { return name_; }
    /// The plane system of the map; nothing for a map of sheets, and while its zone or its datum is not known.
    std::optional<PlaneSystem> System() const;
    /// The options with which Load shows Sources() in the system that the map has now.
    ImportOptions HowToReopen() const;

    // --- Work without a word (map_files.cpp, map_writing.cpp) ----------------------------------------------------------------
    /// Shows the sources in place of the map that is there: vector files as `options` tells, or one archive, exchange text, older
    /// map file or folder of such, none of which says what plane system it is in: of these `options` can tell it. When they
    /// cannot be read, or the operator cancels, the map stays.
    ImportResult Load(const QStringList& sources, ImportOptions options);
    /// Reads sources beside the map that is there, in its frame and zone. When that fails or is cancelled the map is as before;
    /// layers that are there keep their looks. Where nobody knows the map's zone it is that of vector data from then on. One step
    /// of the history, but where two blocks of one layer and group are there.
    ImportResult Import(const QStringList& sources, ImportOptions options);
    /// Saves as an archive of "1.00" or "1.10" (empty: that), whose form the name tells.
    /// Where another program has saved the map's archive meanwhile, it is replaced too, or with `Over::Own` nothing is.
    enum class Over : std::uint8_t { Any, Own };
    SavedArchive Save(const QString& path, const std::string& version, Over over = Over::Any);
    /// What such an archive does not keep of this map, in words. Switches that opening sets anyway are not counted.
    QStringList Losses(const QString& path, const std::string& version) const;
    /// Writes the exchange text, "1.00" or "1.01". Empty when it was written, else why not. What stood there stays until then.
    QString WriteExchange(const QString& path, const std::string& version);
    /// What the exchange text of that version does not keep of this map, in words.
    QStringList ExchangeLosses(const std::string& version);
    /// Why no such text can be written there: the place is none for it, or the map has something that would shift what stands
    /// behind it. Empty when it can.
    QString WhyNoExchange(const QString& path, const std::string& version);
    ExportResult Export(ExportOptions options);
    /// An empty map without a name.
    void New();

    // --- With questions (file_dialogs.cpp) -----------------------------------------------------------------------------------
    /// The same as Load, asking for unsaved changes first and telling what went wrong.
    void Open(const QStringList& sources, const ImportOptions& options);
    void AskOpen();
    void AskOpenFolder();
    void AskImport();
    /// False when the operator went back.
    bool AskSave();
    bool AskSaveAs();
    /// Asks for the plane system of the map, also where it is known: no coordinate changes.
    void AskSystemOfMap();
    void AskWriteExchange();
    void AskExport();
    void AskNew();
    /// Saves, drops or keeps unsaved changes as the operator wants; false: the map is to stay as it is.
    bool MayLeaveMap();
    /// Whether what shows the map again is there; where it is gone, the operator is asked as for unsaved changes.
    bool MayReopen();
    // --- Symbols and line types that layers use (map_tables.cpp) --------------------------------------------------------------
    /// Takes those of a file in place of those that are there, for this map and the next ones; false, with nothing changed, where
    /// it holds none.
    bool ReadSymbols(const QString& path);
    bool ReadLineTypes(const QString& path);
    /// Reads the files that were taken last, after an init. What to tell of those that cannot be read any more.
    QStringList ReadTables();
    /// The control's own alone, now and for the next maps.
    void DropTables();
    void AskSymbols();
    void AskLineTypes();
    /// Shows some lines in a box, with what to do about them.
    void Tell(bool isError, const QStringList& lines);

signals:
    /// Another map is there.
    void Opened(const orvane::ImportSummary& summary);
    /// Something was read beside the map.
    void Added();
    /// Name or place on the disk changed.
    void Renamed();

private:
    // --- Readers (map_reading.cpp) -------------------------------------------------------------------------------------------
    // What is read in place of the map calls `begin`, which empties it, once nothing is left that could go wrong or be
    // cancelled; without it the data comes beside the map.
    ImportResult Read(const QStringList& sources, ImportOptions options, const std::function<void()>& begin);
    ImportResult ReadArchive(const QStringList& sources, WorkProgress& progress, const std::function<void()>& begin);
    ImportResult ReadExchange(const QString& path, WorkProgress& progress, const std::function<void()>& begin);
    ImportResult ReadLegacy(const QStringList& sources, WorkProgress& progress, const std::function<void()>& begin);
    /// Reads with a reader of the core, which cannot tell beforehand what it will make, first into a store of its own.
    using Reader = std::function<bool(CDigMem& store, const std::function<bool(double)>& progress)>;
    ImportResult ReadTwice(const Reader& reader, WorkProgress& progress, const std::function<void()>& begin,
                           const QString& nothing);
    /// Faults data of a layer that the map has, with data, as one of another type.
    ImportResult MayNotMix(const CDigMem& look);
    /// Faults an archive that the map cannot take whole and without moving what it has. Tells the progress.
    /// `looks` become those of the files that were looked at.
    ImportResult LookAtArchive(const QString& path, const std::function<bool(double)>& told, SetLooks& looks);
    /// Asks before an export takes away what the dialog did not ask about: a folder in place of the file that was `typed`, and
    /// files that belong to the one under `path`. (file_dialogs.cpp)
    bool MayReplaceExport(const QString& typed, const ExportFormatFacts& facts, const QString& path);
    /// Asks whether something may be written that does not keep all of the map.
    bool MayLose(const QString& question, const QStringList& losses);
    bool SaveWithQuestions(const QString& path, const std::string& version);
    /// Base name, behind links, of the files that an archive of that name is made of.
    static std::string PlaceOfSet(const QString& path);
    /// Whether an archive of that name is made of the files that the map's archive is made of.
    bool IsOwnSet(const QString& path) const;
    /// What to do about an archive whose data this map does not have all of; `why` says it.
    enum class OverOld : std::uint8_t { Replace, OtherName, Leave };
    OverOld AskOverOld(const QString& why);
    /// The layers that were read with these blocks can be picked and edited: files say nothing of it.
    void LetEdit(const std::vector<BlockKey>& blocks);
    /// An empty map, with the symbols and line types that were chosen.
    void StartOver();
    // --- The plane system (map_systems.cpp) ----------------------------------------------------------------------------------
    /// Whether coordinates of the map are plane metres of a system that nobody has told whole.
    bool IsSystemUnknown() const;
    bool HasData() const;
    void TakeSystem(const PlaneSystem& system);
    /// Of what was read in place of a map.
    void TakeSystemOf(const QStringList& sources, const ImportSummary& summary, const ImportOptions& options);
    /// Of what was read beside a map whose own one nobody knows. Told before the import is a step of the history, if it will be.
    void TakeSystemOfImport(const ImportSummary& summary, bool hadData, bool becomesStep);
    /// Where that import was taken back, nobody knows the system any more.
    void DropSystemOfImport(int step);
    /// Why the options tell no system that the sources can be in; empty when they do, or are for vector data.
    ImportResult CheckSystem(const QStringList& sources, const ImportOptions& options) const;
    /// Asks for zone and datum where they are not known; false when the operator went back. What is exported without them can be
    /// told later, so that who has said once that nobody knows is asked no more; what is imported would stand in a wrong place.
    bool AskSystem(const QString& what, const QString& unknown, bool isForExport);
    /// Reads by `read`, asking for the system of sources that do not name it until it is known or the operator gives up.
    ImportResult ReadAsking(bool asksZone, ImportOptions options,
                            const std::function<ImportResult(const ImportOptions& options)>& read);
    /// Tools are cancelled, and a map in the mesh frame goes back into it, while this lives.
    class HomeFrame;

    OrvaneWidget& map_;
    EditHistory& history_;
    PlaceLabel& place_;
    QWidget& window_;
    QString path_;
    QString name_;
    std::string version_;      ///< that the archive is saved in: as it was read, or as was asked for
    std::string readVersion_;  ///< of the archive that was read last
    SetLooks looks_;           ///< of the archive's files as they were read or saved here
    /// Base name, behind links, of a set that this map has a part of: what could not be read is nowhere but there, whatever other
    /// archive the map is saved as. Empty when all was read, and once that set was saved over.
    std::string partPlace_;
    bool readIsPart_ = false;     ///< some of the archive that was read last could not be
    SetLooks readLooks_;          ///< of the archive that was read last
    std::optional<Datum> datum_;  ///< of a map in plane metres; the zone is with the place in the status bar
    /// What was known before an import brought the map its system.
    struct SystemBefore {
        int step = 0;  ///< of the history, that the import came behind
        int zone = 0;
        std::optional<Datum> datum;
    };
    std::optional<SystemBefore> beforeImport_;
    bool nobodyKnowsSystem_ = false;  ///< the operator said so
    ImportOptions openedBy_;
    QStringList toldLosses_;
    QStringList tableNotes_;  ///< of the last start over
    QStringList opened_;
    QStringList sources_;  ///< what the map was read from, with what was imported since
};

}  // namespace orvane
