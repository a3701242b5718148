// The language of the viewer: English in the source, others as compiled translations in the program.
#pragma once

#include <QMenu>
#include <QString>
#include <functional>

namespace orvane {

/// Installs the translations for the language that the operator chose, or else the system's. `forced` is a language ("en", "ja")
/// that takes the place of both; empty for none. Those of a call before go.
void InstallLanguage(const QString& forced = {});
/// The menu that chooses it. `changed` runs after a choice that is not the language at hand: windows show another language once
/// they are made anew. The choice is kept when it answers true.
void FillLanguageMenu(QMenu& menu, std::function<bool()> changed);

}  // namespace orvane
