// The question where something is to be written.
#pragma once

#include <QString>
#include <QWidget>
#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace orvane {

/// A form that can be written: the dialog's filter, and the ending of its files with the dot.
struct SaveForm {
    QString filter;
    QString ending;
};

struct SaveName {
    QString path;
    std::size_t form = 0;  ///< the one that was chosen; the name may have the ending of another one
};

/// Asks for a name, `start` being the one that is offered. One without an ending gets that of the form. What stands under the
/// name that comes out may be replaced: the operator was asked. Nothing when the operator went back. `isWhole` tells whether a
/// name may stay as it was typed; without it any ending may.
std::optional<SaveName> AskSaveName(QWidget& parent, const QString& title, const QString& start,
                                    const std::vector<SaveForm>& forms,
                                    const std::function<bool(const QString& path)>& isWhole = {});

/// The same for one form with one ending.
std::optional<QString> AskOneSaveName(QWidget& parent, const QString& title, const QString& start, const SaveForm& form);

/// Asks whether what stands under `path` may be replaced.
bool MayReplace(QWidget& parent, const QString& path);

}  // namespace orvane
