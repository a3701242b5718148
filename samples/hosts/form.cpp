#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>

#include "hosts/qt/orvane_widget.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QWidget form;
    auto* map = new orvane::OrvaneWidget;  // the control, as any other widget
    auto* text = new QLabel("Click a feature");
    auto* column = new QVBoxLayout(&form);
    column->addWidget(map, 1);
    column->addWidget(text);
    form.resize(800, 600);
    form.show();
    map->Call("OrvInit");
    map->PaintNow();  // the first paint makes the buffers

    const QVariantList x{0.0, 900.0, 400.0, 0.0}, y{0.0, 100.0, 700.0, 0.0}, z{0.0, 0.0, 0.0, 0.0};
    map->Call("OrvAddLayer", {"TOWN", 1, 3, 0});
    map->Call("OrvSetLayColor", {"TOWN", 0x80C0A0});  // blue, green, red
    map->Call("OrvAddDatEx", {"TOWN", 1, 7, 0, x, y, z});
    map->Call("OrvDspFit2", {5});  // 5 per cent of margin
    map->SetScrollMode(10);        // the right button scrolls
    QObject::connect(map, &orvane::OrvaneWidget::OnDataClick,
                     [text](int datNo, const QString& code) { text->setText(QString("%1 of %2").arg(datNo).arg(code)); });
    return QApplication::exec();
}
