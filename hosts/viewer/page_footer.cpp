#include "hosts/viewer/page_footer.h"

#include <QFontMetricsF>
#include <QLocale>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <utility>

namespace orvane {

namespace {

constexpr double kUnitsPerMm = 300 / 25.4;  // of the layout: fine enough for whole pixels of letters
constexpr double kGap_mm = 1;               // between the map and the words
constexpr double kWordsApart_mm = 5;        // on one line
constexpr double kLeast_mm = 8;
constexpr double kLetter_mm = 3.5;
constexpr double kBarRow_mm = 5;
constexpr double kBar_mm = 1.5;
constexpr double kBarLine_mm = 0.2;
constexpr double kMostBar_mm = 50;

double Units(double mm) { return mm * kUnitsPerMm; }

QFont FooterFont() {
    QFont font;
    font.setPixelSize(static_cast<int>(Units(kLetter_mm)));
    return font;
}

/// Words in as many lines as they need, the lines of a long name broken anywhere. The height, units.
double LayOut(QTextLayout& layout, double width, Qt::Alignment side) {
    QTextOption option(side);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    double height = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, height});
        height += line.height();
    }
    layout.endLayout();
    return height;
}

double HeightOf(const QString& words, double width) {
    QTextLayout layout(words, FooterFont());
    return LayOut(layout, width, Qt::AlignLeft);
}

void PaintWords(QPainter& painter, const QString& words, double y, double width, Qt::Alignment side) {
    QTextLayout layout(words, FooterFont());
    LayOut(layout, width, side);
    layout.draw(&painter, {0, y});
}

QString LengthText(double length_m) {
    const QLocale english(QLocale::English);
    if (length_m >= 1000) return english.toString(length_m / 1000, 'g', 12) + " km";
    return english.toString(length_m, 'g', 12) + " m";
}

/// Half black, half white, with the length at its end.
void PaintBar(QPainter& painter, int zoom, double y, double width) {
    const BarLength bar = BarLengthAt(zoom, (std::min)(kMostBar_mm, width / kUnitsPerMm / 2));
    const double length = Units(bar.paper_mm);
    const double line = Units(kBarLine_mm);
    const QRectF whole(0, y + Units(1), length, Units(kBar_mm));
    painter.fillRect(whole, Qt::black);
    painter.fillRect(QRectF(whole.center().x(), whole.top(), length / 2, whole.height()).adjusted(line, line, -line, -line),
                     Qt::white);
    const QRectF beside(length + Units(2), whole.center().y() - Units(kBarRow_mm) / 2, width, Units(kBarRow_mm));
    painter.drawText(beside, Qt::AlignLeft | Qt::AlignVCenter, LengthText(bar.ground_m));
}

}  // namespace

BarLength BarLengthAt(int zoom, double most_mm) {
    const double most_m = most_mm / 1000 * zoom;
    const double power = std::pow(10, std::floor(std::log10(most_m)));
    double length = power;
    for (const double step : {2.0, 5.0, 10.0}) {
        if (step * power <= most_m) length = step * power;
    }
    return {length, length * 1000 / zoom};
}

PageFooter::PageFooter(QString left, QString right, double width_mm, int barZoom)
    : left_(std::move(left)), right_(std::move(right)), width_mm_(width_mm), barZoom_(barZoom) {
    const double width = Units(width_mm);
    const QFontMetricsF metrics(FooterFont());
    const double both = metrics.horizontalAdvance(left_) + metrics.horizontalAdvance(right_) + Units(kWordsApart_mm);
    isOneLine_ = both <= width;
    leftHeight_ = HeightOf(left_, width);
    rightHeight_ = HeightOf(right_, width);
    const double words = isOneLine_ ? (std::max)(leftHeight_, rightHeight_) : leftHeight_ + rightHeight_;
    const double least_mm = (std::max)(kLeast_mm, kGap_mm + words / kUnitsPerMm);
    height_mm_ = static_cast<int>(std::ceil((std::min)(least_mm + (barZoom > 0 ? kBarRow_mm : 0), 1e6)));
}

void PageFooter::Paint(QPainter& painter, int dpi, double height_mm) const {
    painter.save();
    const double width = Units(width_mm_);
    painter.scale(dpi / 25.4 / kUnitsPerMm, dpi / 25.4 / kUnitsPerMm);
    painter.setClipRect(QRectF(0, 0, width, Units(height_mm)));
    painter.setPen(Qt::black);
    painter.setFont(FooterFont());
    double y = Units(kGap_mm);
    PaintWords(painter, left_, y, width, Qt::AlignLeft);
    if (!isOneLine_) y += leftHeight_;
    PaintWords(painter, right_, y, width, isOneLine_ ? Qt::AlignRight : Qt::AlignLeft);
    if (barZoom_ > 0) PaintBar(painter, barZoom_, Units(height_mm_ - kBarRow_mm), width);
    painter.restore();
}

}  // namespace orvane
