#include "hosts/viewer/save_name.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <algorithm>

namespace orvane {

std::optional<SaveName> AskSaveName(QWidget& parent, const QString& title, const QString& start,
                                    const std::vector<SaveForm>& forms, const std::function<bool(const QString& path)>& isWhole) {
    QFileDialog dialog(&parent, title, start);
    QStringList filters;
    for (const SaveForm& form : forms) filters << form.filter;
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(filters);
    const auto formOf = [&](const QString& filter) {
        return static_cast<std::size_t>((std::max)(qsizetype{0}, filters.indexOf(filter)));
    };
    // The dialog asks about the name with the ending on it.
    const auto takeFilter = [&](const QString& filter) { dialog.setDefaultSuffix(forms[formOf(filter)].ending.mid(1)); };
    takeFilter(filters.front());
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, takeFilter);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    SaveName name{dialog.selectedFiles().front(), formOf(dialog.selectedNameFilter())};
    if (!isWhole || isWhole(name.path)) return name;
    // A dot in the name passes for an ending: the dialog's question was about another file.
    name.path += forms[name.form].ending;
    if (QFileInfo::exists(name.path) && !MayReplace(parent, name.path)) return std::nullopt;
    return name;
}

std::optional<QString> AskOneSaveName(QWidget& parent, const QString& title, const QString& start, const SaveForm& form) {
    const auto hasEnding = [&](const QString& path) { return path.endsWith(form.ending, Qt::CaseInsensitive); };
    const std::optional<SaveName> name = AskSaveName(parent, title, start, std::vector<SaveForm>{form}, hasEnding);
    return name ? std::optional(name->path) : std::nullopt;
}

bool MayReplace(QWidget& parent, const QString& path) {
    const QString question =
        QFileInfo(path).isDir()
            ? QCoreApplication::translate("SaveName", "%1 is a folder that exists already. Replace it with all that is in it?")
            : QCoreApplication::translate("SaveName", "%1 exists already. Replace it?");
    return QMessageBox::question(&parent, "ORVANE4", question.arg(path)) == QMessageBox::Yes;
}

}  // namespace orvane
