// The language of the viewer: English in the source, others as compiled translations in the program.
#pragma once

#include <QMenu>
#include <QString>

namespace orvane {

/// Installs the translations for the language that the operator chose, or else the system's. `forced` is a language ("en", "ja")
/// that takes the place of both; empty for none.
void InstallLanguage(const QString& forced = {});
/// The menu that chooses it; the choice holds from the next start on.
void FillLanguageMenu(QMenu& menu);

}  // namespace orvane
