#include "hosts/viewer/settings.h"

#include <QDir>
#include <QFileInfo>

namespace orvane {

namespace {

constexpr int kRecentFiles = 8;

}  // namespace

QSettings Settings() { return QSettings(QSettings::defaultFormat(), QSettings::UserScope, "Orvane", "orvane4_viewer"); }

QStringList RecentFiles() { return Settings().value("recent").toStringList(); }

void NoteRecentFile(const QString& path) {
    const QString whole = QFileInfo(path).absoluteFilePath();
    QStringList files = RecentFiles();
    files.removeAll(whole);
    files.prepend(whole);
    while (files.size() > kRecentFiles) files.removeLast();
    Settings().setValue("recent", files);
}

void DropRecentFile(const QString& path) {
    QStringList files = RecentFiles();
    if (files.removeAll(QFileInfo(path).absoluteFilePath()) > 0) Settings().setValue("recent", files);
}

QString LastFolder() { return Settings().value("folder", QDir::homePath()).toString(); }

void NoteFolderOf(const QString& path) { Settings().setValue("folder", QFileInfo(path).absolutePath()); }

}  // namespace orvane
