// The life of the program: one window after the other, as the operator changes the language.
#pragma once

#include <QString>
#include <QStringList>

#include "foreign/import.h"

namespace orvane {

/// What the command line asks for.
struct ViewerStart {
    QStringList files;
    ImportOptions options;  ///< for these files alone
    QString language;       ///< empty: the one chosen in the menu, else the system's
    QString credit;         ///< whose data it is; empty: nothing is known
};

/// Shows a window with the files, and after a change of language another one with what the last one showed. Returns the exit code
/// of the event loop once the last window has closed.
int RunViewer(ViewerStart start);

}  // namespace orvane
