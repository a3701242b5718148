// Printing: paper, scale and a preview; to a printer, a PDF or a picture.
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QImage>
#include <QLabel>
#include <QPageLayout>
#include <QSpinBox>
#include <QStringList>
#include <QTimer>
#include <functional>

#include "hosts/viewer/map_page.h"
#include "hosts/viewer/page_footer.h"

class QPrinter;
class QPushButton;

namespace orvane {

class WorkProgress;

class PrintDialog : public QDialog {
    Q_OBJECT

public:
    /// `map` must outlive the dialog. `title` and `credit` stand below the map.
    PrintDialog(OrvaneWidget& map, const QString& title, const QString& credit, QWidget* parent);

    /// Brings back the scale of the view, which is offered until another one was chosen.
    QPushButton& ViewScale() { return *viewScale_; }
    QSpinBox& ScaleField() { return *scale_; }
    QComboBox& PaperField() { return *paper_; }
    QComboBox& TurnField() { return *turn_; }
    QLabel& Preview() { return *preview_; }
    QLabel& Words() { return *words_; }
    /// A map of sheets is not to scale: no scale stands on its pages.
    void SetTrueToScale(bool on);
    /// What tells the images that the frame or page drawn last does not show, a line each.
    void SetLeftOut(std::function<QStringList()> leftOut) { leftOut_ = std::move(leftOut); }
    /// Brings the preview up to date at once.
    void ShowPreview();
    /// Empty, or why the file was not written and what to do.
    QString WritePdf(const QString& path);
    /// The page with its margins, of 300 dots an inch.
    QString WritePng(const QString& path);
    /// Prints on the paper that the printer has, which the operator may have changed in the system's dialog; the fields follow.
    /// Empty, or why it was not printed and what to do.
    QString PrintTo(QPrinter& printer);
    PageSetup Setup(int dpi) const { return SetupOn(Layout(), dpi); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class Painted : std::uint8_t { Whole, NoMemory, Cancelled };
    /// The map as it is drawn, or performed anew where the painter takes shapes.
    enum class MapAs : std::uint8_t { Picture, Shapes };
    PageFooter FooterOn(const QPageLayout& layout) const;
    PageSetup SetupOn(const QPageLayout& layout, int dpi) const;
    void ShowSheet();
    void AskPdf();
    void AskPng();
    void AskPrinter();
    QPageLayout Layout() const;
    /// Map, frame and the line below, with the painter's unit a pixel of the page at `dpi` and its origin the paper's corner.
    Painted PaintSheet(QPainter& painter, const QPageLayout& layout, int dpi, MapAs how, WorkProgress* progress = nullptr);
    /// What to tell of a page that was not painted: nothing when the operator cancelled.
    static QString Why(Painted painted);
    void KeepSettings();
    void Tell(const QString& error);
    /// Of what was written: why not, or what it does not show though the preview does.
    void TellOfPage(const QString& error);

    OrvaneWidget& map_;
    QString title_;
    QString credit_;
    QComboBox* paper_;
    QComboBox* turn_;
    QSpinBox* scale_;
    QPushButton* viewScale_;
    QDoubleSpinBox* x_;
    QDoubleSpinBox* y_;
    QLabel* preview_;
    QLabel* words_;
    QTimer later_;
    QImage sheet_;  ///< the page of the preview
    bool trueToScale_ = true;
    std::function<QStringList()> leftOut_;
    QStringList missing_;  ///< images that the last page, if it was painted whole, does not show
    QStringList previewMissing_;
};

}  // namespace orvane
