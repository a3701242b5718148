#include "hosts/viewer/event_log.h"

#include <QPushButton>
#include <QStringList>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int kKeptLines = 1000;

QString Word(const QString& text) { return '"' + text + '"'; }
QString Word(double number) { return QString::number(number, 'g', 12); }
QString Word(int number) { return QString::number(number); }

template <class... Args>
QString Line(const char* name, const Args&... args) {
    return QString::fromLatin1(name) + '(' + QStringList{Word(args)...}.join(", ") + ')';
}

}  // namespace

EventLog::EventLog(OrvaneWidget& map, QWidget* parent)
    : QDockWidget(tr("Events"), parent), lines_(new QPlainTextEdit), moves_(new QCheckBox(tr("Mouse moves"))) {
    setObjectName("events");
    lines_->setReadOnly(true);
    lines_->setMaximumBlockCount(kKeptLines);
    lines_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    lines_->setFocusPolicy(Qt::StrongFocus);
    lines_->setAccessibleName(tr("Events, the last one at the end"));
    auto* clear = new QPushButton(tr("Clear"));
    connect(clear, &QPushButton::clicked, lines_, &QPlainTextEdit::clear);
    auto* row = new QHBoxLayout;
    row->addWidget(moves_);
    row->addStretch();
    row->addWidget(clear);
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->addWidget(lines_);
    column->addLayout(row);
    setWidget(page);
    Connect(map);
}

void EventLog::Connect(OrvaneWidget& map) {
    using Map = OrvaneWidget;
    const auto add = [this](const QString& line) { lines_->appendPlainText(line); };
    connect(&map, &Map::OnZoomChange, this, [add](auto... a) { add(Line("OnZoomChange", a...)); });
    connect(&map, &Map::MouseDown, this, [add](auto... a) { add(Line("MouseDown", a...)); });
    connect(&map, &Map::MouseUp, this, [add](auto... a) { add(Line("MouseUp", a...)); });
    connect(&map, &Map::MouseMove, this, [this, add](auto... a) {
        if (moves_->isChecked()) add(Line("MouseMove", a...));
    });
    connect(&map, &Map::OnOrgDataClick, this, [add](auto... a) { add(Line("OnOrgDataClick", a...)); });
    connect(&map, &Map::OnOrgNearPtClick, this, [add](auto... a) { add(Line("OnOrgNearPtClick", a...)); });
    connect(&map, &Map::OnOrgPointClick, this, [add](auto... a) { add(Line("OnOrgPointClick", a...)); });
    connect(&map, &Map::OnHintStart, this, [add](auto... a) { add(Line("OnHintStart", a...)); });
    connect(&map, &Map::OnDataClick, this, [add](auto... a) { add(Line("OnDataClick", a...)); });
    connect(&map, &Map::OnNearPtClick, this, [add](auto... a) { add(Line("OnNearPtClick", a...)); });
    connect(&map, &Map::OnDataDblClick, this, [add](auto... a) { add(Line("OnDataDblClick", a...)); });
    connect(&map, &Map::OnEditorEnd, this, [add](auto... a) { add(Line("OnEditorEnd", a...)); });
    connect(&map, &Map::OnEditorStart, this, [add](auto... a) { add(Line("OnEditorStart", a...)); });
}

}  // namespace orvane
