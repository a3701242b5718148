#include "hosts/viewer/run_viewer.h"

#include <QApplication>
#include <QTimer>
#include <utility>

#include "hosts/viewer/language.h"
#include "hosts/viewer/main_window.h"

namespace orvane {

int RunViewer(ViewerStart start) {
    bool again = true;
    int code = 0;
    while (std::exchange(again, false)) {
        InstallLanguage(start.language);
        MainWindow window;
        QObject::connect(&window, &MainWindow::LanguageChanged, &window, [&] {
            const QStringList sources = window.Files().Sources();
            if (sources != start.files) start = {sources, {}, {}, {}};  // the credit was for other files
            start.options = window.Files().HowToReopen();
            start.language.clear();  // the operator's choice has been kept
            again = true;
        });
        window.show();
        // The window is on the screen before the reading begins.
        if (!start.files.isEmpty()) {
            QTimer::singleShot(0, &window, [&] {
                window.Open(start.files, start.options);
                if (!start.credit.isEmpty()) window.SetCredit(start.credit);
            });
        }
        code = QApplication::exec();  // until the last window has closed
    }
    return code;
}

}  // namespace orvane
