#include "hosts/viewer/language.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QPointer>
#include <QTranslator>
#include <utility>

#include "hosts/viewer/settings.h"

// The program takes the translations out of its library by this name; a macro that wants no namespace around it.
static void TakeTranslationsIn() { Q_INIT_RESOURCE(translations); }

namespace orvane {

namespace {

struct Language {
    const char* name;
    const char* shown;  // in itself
};
constexpr Language kLanguages[] = {{"", nullptr}, {"en", "English"}, {"ja", "日本語"}};

}  // namespace

void InstallLanguage(const QString& forced) {
    TakeTranslationsIn();
    QString name = forced.isEmpty() ? Settings().value("language").toString() : forced;
    const QLocale locale = name.isEmpty() ? QLocale() : QLocale(name);
    // They are the application's, and go with it at the latest.
    static QList<QPointer<QTranslator>> installed;
    for (const QPointer<QTranslator>& old : std::exchange(installed, {})) delete old.data();
    // The source is English; its own file has the two forms of what is counted.
    const bool isEnglish = locale.language() == QLocale::English || locale.language() == QLocale::C;
    auto* own = new QTranslator(qApp);
    installed << own;
    if (own->load(isEnglish ? QLocale(QLocale::English) : locale, "viewer", "_", ":/i18n")) {
        QCoreApplication::installTranslator(own);
    }
    if (isEnglish) return;
    auto* buttons = new QTranslator(qApp);  // what Qt's own dialogs say
    installed << buttons;
    if (buttons->load(locale, "qtbase", "_", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(buttons);
    }
}

void FillLanguageMenu(QMenu& menu, std::function<bool()> changed) {
    auto* group = new QActionGroup(&menu);
    const QString chosen = Settings().value("language").toString();
    for (const Language& language : kLanguages) {
        const QString shown = language.shown == nullptr ? QCoreApplication::translate("Language", "As the &system")
                                                        : QString::fromUtf8(language.shown);
        QAction* action = menu.addAction(shown);
        action->setData(QString(language.name));
        action->setCheckable(true);
        action->setChecked(chosen == language.name);
        group->addAction(action);
        QObject::connect(action, &QAction::triggered, &menu, [group, changed, name = QString(language.name)] {
            const QString now = Settings().value("language").toString();
            if (now == name) return;
            if (changed()) {
                Settings().setValue("language", name);
                return;
            }
            for (QAction* other : group->actions()) other->setChecked(other->data() == now);
        });
    }
}

}  // namespace orvane
