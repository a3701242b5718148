// What the viewer keeps from one start to the next, in the settings of the organisation "Orvane".
#pragma once

#include <QSettings>
#include <QStringList>

namespace orvane {

/// The settings, in whatever form and place the program made the default one.
QSettings Settings();

/// The maps that were opened or saved last, the latest first.
QStringList RecentFiles();
void NoteRecentFile(const QString& path);
/// Takes one that is gone out of the list.
void DropRecentFile(const QString& path);

/// The folder that file dialogs begin in.
QString LastFolder();
void NoteFolderOf(const QString& path);

}  // namespace orvane
