// A window with the operator in front of it: keys, clicks, and what is answered to dialogs.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>

#include "hosts/viewer/main_window.h"
#include "hosts/viewer/settings.h"

namespace orvane {

class Walk : public ::testing::Test {
protected:
    Walk() {
        Settings().clear();
        Settings().setValue("folder", folder.path());
        window = std::make_unique<MainWindow>();
        window->resize(1200, 760);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get(), 30000));
        Map().setFocus();
        Settle();
        QObject::connect(&asked_, &QTimer::timeout, [this] { LookForDialog(); });
        asked_.start(5);
    }
    ~Walk() override { EXPECT_TRUE(answers_.empty()) << answers_.size() << " dialogs did not show"; }

    /// A copy of a sample with its siblings: a walk that goes astray may save over what it opened.
    QString Sample(const char* name) const {
        const QDir from(ORVANE_SAMPLES);
        const QDir to(folder.filePath("samples"));
        to.mkpath(".");
        const QString siblings = QFileInfo(name).completeBaseName() + ".*";
        for (const QString& file : from.entryList({siblings}, QDir::Files)) QFile::copy(from.filePath(file), to.filePath(file));
        return to.filePath(name);
    }
    QString File(const char* name) const { return folder.filePath(name); }
    OrvaneWidget& Map() { return *static_cast<OrvaneWidget*>(window->centralWidget()); }
    CDigMem& Store() { return Map().Control().store; }
    static void Settle() {
        for (int i = 0; i < 3; ++i) QApplication::processEvents();
    }

    /// A key as the operator presses it in the map.
    void Press(QKeyCombination key) {
        window->activateWindow();  // a dialog that closed may have left none active
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get(), 30000)) << "an X server says so in its own time";
        Settle();
        Map().setFocus();
        QTest::keyClick(&Map(), key.key(), key.keyboardModifiers());
        Settle();
    }
    /// Chooses an action of the menus by its English name.
    void Choose(const char* action) {
        QAction* found = window->FindAction(action);
        ASSERT_NE(found, nullptr) << action;
        ASSERT_TRUE(found->isEnabled()) << action << " cannot be chosen now";
        found->trigger();
        Settle();
    }
    void Click(QPoint at, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(&Map(), Qt::LeftButton, modifiers, at);
        Settle();
    }
    void DoubleClick(QPoint at) {
        QTest::mouseClick(&Map(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(&Map(), Qt::LeftButton, {}, at);
        Settle();
    }
    /// Map units of a pixel of the screen.
    double Unit() { return Map().Control().ScreenToWorldX(1) - Map().Control().ScreenToWorldX(0); }
    /// The widget's point of a map place.
    QPoint PointOf(double x, double y) {
        const COrvane4Ctrl& ctrl = Map().Control();
        const double unit = Unit();
        const double ratio = Map().devicePixelRatioF();
        return {qRound((x - ctrl.ScreenToWorldX(0)) / unit / ratio), qRound((ctrl.ScreenToWorldY(0) - y) / unit / ratio)};
    }

    /// What the operator does in the next dialogs, in their order; one that nobody expects is closed and fails the test.
    void WhenAsked(std::function<void(QDialog&)> work) { answers_.push_back(std::move(work)); }
    void WhenAskedForFile(const QString& path, const QString& filter = {}) {
        WhenAsked([path, filter](QDialog& dialog) {
            auto* files = qobject_cast<QFileDialog*>(&dialog);
            ASSERT_NE(files, nullptr) << "another dialog than one for files";
            if (!filter.isEmpty()) {
                files->selectNameFilter(filter);
                emit files->filterSelected(filter);  // as a choice by hand would
            }
            auto* name = files->findChild<QLineEdit*>("fileNameEdit");
            name->setText(path);
            QTest::keyClick(name, Qt::Key_Return);
        });
    }
    /// Presses a button of a message box; its words go to `said`.
    void WhenTold(QMessageBox::StandardButton button) {
        WhenAsked([this, button](QDialog& dialog) {
            auto* box = qobject_cast<QMessageBox*>(&dialog);
            ASSERT_NE(box, nullptr) << "another dialog than a message";
            said = box->text() + '\n' + box->informativeText();
            ASSERT_NE(box->button(button), nullptr) << said.toStdString();
            QTest::mouseClick(box->button(button), Qt::LeftButton);
        });
    }

    /// A layer with one block, and features of it.
    void MakeLayer(const char* code, int layType) {
        ASSERT_TRUE(Map().Call("OrvAddLayer", {code, 1, layType, 5}).toBool());
        Map().Call("OrvSetLayActMode", {code, true});
        Map().Call("OrvSetLayEditFlg", {code, true});
    }
    void AddFeature(const char* code, int datID, const QVariantList& x, const QVariantList& y, const QVariantList& z = {}) {
        QVariantList heights = z;
        while (heights.size() < x.size()) heights << 0.0;
        ASSERT_TRUE(Map().Call("OrvAddDatEx", {code, 1, datID, 0, x, y, heights}).toBool());
    }
    void AddSquare(const char* code, int datID, double left, double low, double side) {
        AddFeature(code, datID, {left, left + side, left + side, left, left}, {low, low, low + side, low + side, low});
    }
    void Fit() {
        MapView view(Map().Control());
        view.SetSquareArea();
        view.FitAll(10);
        window->RefreshNow();
        Settle();
    }
    const DigBlock& BlockOf(const char* code) { return Store().Block(Store().FindBlock(code, 1).block); }

    QTemporaryDir folder;
    std::unique_ptr<MainWindow> window;
    QString said;

private:
    void LookForDialog() {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || dialog == busy_ || qobject_cast<QProgressDialog*>(dialog) != nullptr) return;
        busy_ = dialog;
        if (answers_.empty()) {
            auto* box = qobject_cast<QMessageBox*>(dialog);
            ADD_FAILURE() << "a dialog that nobody expects: "
                          << (box != nullptr ? box->text() : dialog->windowTitle()).toStdString();
            dialog->reject();
        } else {
            const auto answer = std::move(answers_.front());
            answers_.pop_front();
            answer(*dialog);
        }
        busy_ = nullptr;
    }

    QTimer asked_;
    std::deque<std::function<void(QDialog&)>> answers_;
    QDialog* busy_ = nullptr;
};

}  // namespace orvane
