// The map and the disk: opening, saving, reading beside what is there, writing in other forms.
//
// The functions that ask end in a dialog with the operator; the others do the work and answer, so that tests and the command line
// can call them without one. The last good archive is never touched before the new one is whole (hosts/common).
#pragma once

#include <QObject>
#include <QStringList>
#include <functional>
#include <string>
#include <vector>

#include "foreign/export.h"
#include "foreign/import.h"
#include "hosts/common/archive_save.h"
#include "hosts/viewer/edit_history.h"
#include "hosts/viewer/place_label.h"

namespace orvane {

/// What a file is, by its name and its first bytes.
enum class SourceKind { Archive, Legacy, Exchange, Vector };
SourceKind KindOfSource(const QString& path);

class MapFiles : public QObject {
    Q_OBJECT

public:
    /// All must outlive this; `window` is the one that dialogs belong to.
    MapFiles(OrvaneWidget& map, EditHistory& history, PlaceLabel& place, QWidget& window);

    /// The archive that the map is saved to, empty when it has none.
    const QString& Path() const { return path_; }
    /// What the map is called in titles.
    const QString& Name() const { return name_; }

    // --- Work without a word (map_files.cpp, map_writing.cpp) ----------------------------------------------------------------
    /// Shows the sources in place of the map that is there: vector files as `options` tells, or one archive, exchange text, older
    /// map file or folder of such. When they cannot be read the map stays; one that was broken off after it began leaves an
    /// empty map.
    ImportResult Load(const QStringList& sources, ImportOptions options);
    /// Reads sources beside the map that is there, in its frame and zone.
    ImportResult Import(const QStringList& sources, ImportOptions options);
    /// Saves as an archive of "1.00" or "1.10" (empty: that), whose form the name tells.
    SavedArchive Save(const QString& path, const std::string& version);
    /// What such an archive does not keep of this map, in words. Switches that opening sets anyway are not counted.
    QStringList Losses(const QString& path, const std::string& version) const;
    /// Writes the exchange text, "1.00" or "1.01". Empty when it was written, else why not. What stood there stays until then.
    QString WriteExchange(const QString& path, const std::string& version);
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
    void AskWriteExchange();
    void AskExport();
    void AskNew();
    /// Saves, drops or keeps unsaved changes as the operator wants; false: the map is to stay as it is.
    bool MayLeaveMap();
    /// Symbols and line types that layers use.
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
    ImportResult Read(const QStringList& sources, ImportOptions options, const std::function<void()>& begin);
    ImportResult ReadArchive(const QStringList& sources, const std::function<bool(double)>& progress,
                             const std::function<void()>& begin);
    ImportResult ReadExchange(const QString& path, const std::function<bool(double)>& progress,
                              const std::function<void()>& begin);
    ImportResult ReadLegacy(const QStringList& sources, const std::function<bool(double)>& progress,
                            const std::function<void()>& begin);
    ImportResult ReadLegacyFolder(const QString& folder, const std::function<bool(double)>& progress,
                                  const std::function<void()>& begin);
    bool SaveWithQuestions(const QString& path, const std::string& version);
    /// The layers that were read can be picked and edited: files say nothing of it.
    void LetEdit(std::int32_t firstLayer);
    void StartOver();
    /// Tools are cancelled, and a map in the mesh frame goes back into it, while this lives.
    class HomeFrame;

    OrvaneWidget& map_;
    EditHistory& history_;
    PlaceLabel& place_;
    QWidget& window_;
    QString path_;
    QString name_;
    std::string version_;
    int epsg_ = 0;
    QStringList toldLosses_;
    QStringList sources_;  ///< what the map was read from
};

}  // namespace orvane
