#include "hosts/viewer/image_panel.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QUndoCommand>
#include <QVBoxLayout>
#include <complex>
#include <utility>

#include "control/ctrl.h"
#include "hosts/common/raster_library.h"
#include "hosts/common/watched_raster.h"
#include "hosts/viewer/host_words.h"
#include "hosts/viewer/quiet_wheel.h"
#include "hosts/viewer/settings.h"
#include "hosts/viewer/work_progress.h"
#include "platform/cp932.h"

namespace orvane {

namespace {

/// The map places of the left top corners of two pixels whose middles lie on the places given: a control point is such a corner,
/// and what is picked is a pixel. REQUIRES: two pixels.
std::array<ImagePoint, 2> CornersOf(std::array<ImagePoint, 2> points) {
    using Plane = std::complex<double>;  // y to the north; one factor turns and scales
    const auto pixel = [](QPoint at) { return Plane(at.x(), -static_cast<double>(at.y())); };
    const auto place = [](QPointF at) { return Plane(at.x(), at.y()); };
    const Plane factor = (place(points[1].place) - place(points[0].place)) / (pixel(points[1].pixel) - pixel(points[0].pixel));
    const Plane half = factor * Plane(0.5, -0.5);
    for (ImagePoint& point : points) point.place -= QPointF(half.real(), half.imag());
    return points;
}

}  // namespace

class ImagePanel::ImageStep : public QUndoCommand {
public:
    ImageStep(ImagePanel& panel, const QString& text, State before, State after)
        : QUndoCommand(text), panel_(panel), before_(std::move(before)), after_(std::move(after)) {}
    int id() const override { return kInAnyFrame; }
    void undo() override { panel_.Restore(before_); }
    void redo() override {
        if (!std::exchange(done_, false)) panel_.Restore(after_);
    }

private:
    ImagePanel& panel_;
    State before_;
    State after_;
    bool done_ = true;
};

void ImagePanel::Remember(const QString& text, State before) {
    history_.Stack().push(new ImageStep(*this, text, std::move(before), Now()));
}

void ImagePanel::Restore(const State& state) {
    StopPlacing();  // what it places may be gone, or elsewhere already
    images_ = state.images;
    LoadAll();
    ShowList(images_.empty() ? -1 : 0);
    level_->setCurrentIndex(state.onTop ? 1 : 0);
    map_.Call("OrvDspRastMode", {state.onTop});
    map_.Call("OrvReDraw");
}

ImagePanel::ImagePanel(OrvaneWidget& map, EditHistory& history, ShapeTool& shapes, QWidget* parent)
    : QDockWidget(tr("Images"), parent),
      map_(map),
      history_(history),
      shapes_(shapes),
      list_(new QListWidget),
      level_(new QComboBox) {
    setObjectName("images");
    list_->setAccessibleName(tr("Images, the topmost first"));
    level_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    level_->addItems({tr("under the layers"), tr("over everything")});
    auto* row = new QHBoxLayout;
    const auto button = [&](const QString& text, const QString& hint, auto work) {
        auto* made = new QPushButton(text);
        made->setToolTip(hint);
        made->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        connect(made, &QPushButton::clicked, this, work);
        row->addWidget(made, text.size() == 1 ? 1 : 3);  // an arrow needs little
    };
    button(tr("Add…"), tr("Show an image with the map"), [this] { AskAdd(); });
    button(tr("Place…"), tr("Place the image by two points"), [this] { AskPlace(); });
    button(tr("&Remove"), tr("Take the image away; its file stays"), [this] { Remove(list_->currentRow()); });
    button(QStringLiteral("▲"), tr("Draw the image over the one above it"), [this] { Move(list_->currentRow(), true); });
    button(QStringLiteral("▼"), tr("Draw the image under the one below it"), [this] { Move(list_->currentRow(), false); });
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->addWidget(list_);
    column->addWidget(level_);
    column->addLayout(row);
    setWidget(page);
    KeepWheelFromFields(*page);
    connect(level_, &QComboBox::activated, this, [this](int index) { SetOnTop(index == 1); });
    connect(list_, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (!filling_) SetShown(list_->row(item), item->checkState() == Qt::Checked);
    });
}

void ImagePanel::StopPlacing() {
    if (placing_) placing_->close();
}

void ImagePanel::Forget() {
    StopPlacing();
    images_.clear();
    sights_.clear();
    told_.clear();
    ShowList(-1);
    level_->setCurrentIndex(map_.Control().rastOnTop == 1 ? 1 : 0);
}

void ImagePanel::ShowList(int current) {
    filling_ = true;
    list_->clear();
    for (auto image = images_.rbegin(); image != images_.rend(); ++image) {
        auto* item = new QListWidgetItem(RowText(*image), list_);
        item->setToolTip(image->path);
        if (image->loaded) {
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setCheckState(image->shown ? Qt::Checked : Qt::Unchecked);
        } else {
            // It comes back by itself when the list is loaded the next time and the file is there again.
            item->setForeground(palette().brush(QPalette::Disabled, QPalette::Text));
        }
    }
    list_->setCurrentRow(current);
    filling_ = false;
}

int ImagePanel::RowOf(int id) const {
    for (std::size_t i = 0; i < images_.size(); ++i) {
        if (images_[i].id == id) return static_cast<int>(images_.size() - 1 - i);
    }
    return -1;
}

QString ImagePanel::RowText(const Image& image) const {
    const QString name = QFileInfo(image.path).fileName();
    const auto sight = sights_.find(image.id);
    if (!image.loaded) return tr("%1 (cannot be read)").arg(name);
    if (sight == sights_.end() || !image.shown) return name;
    if (!sight->second.placed) return tr("%1 (has no place yet)").arg(name);
    return sight->second.undrawn.isEmpty() ? name : tr("%1 (not drawn)").arg(name);
}

QStringList ImagePanel::LeftOut() const {
    QStringList lines;
    for (const Image& image : images_) {
        const auto sight = sights_.find(image.id);
        if (!image.shown || !image.loaded || sight == sights_.end() || sight->second.undrawn.isEmpty()) continue;
        const QString why = sight->second.placed ? sight->second.undrawn : tr("it has no place yet");
        lines << tr("%1: %2").arg(QFileInfo(image.path).fileName(), why);
    }
    return lines;
}

void ImagePanel::ReadWith(RasterServerMaker make) {
    const QPointer<ImagePanel> self(this);  // the servers are the control's, which may outlive the panel
    map_.Control().rasters.SetMaker([self, make = std::move(make)]() -> std::unique_ptr<RasterServer> {
        std::unique_ptr<RasterServer> server = make();
        if (!self) return server;
        self->lacksLibrary_ = server == nullptr;
        if (server == nullptr) return nullptr;
        const int id = self->loading_;
        const auto drawn = [self, id](bool good) {
            if (self) self->NoteDrawn(id, good);
        };
        const auto placed = [self, id](bool good) {
            if (self) self->sights_[id].placed = good;
        };
        return WatchRaster(std::move(server), {drawn, placed});
    });
}

// It comes in the middle of a frame.
void ImagePanel::NoteDrawn(int id, bool drawn) {
    Sight& sight = sights_[id];
    const QString why = drawn ? QString() : Words(RasterLibraryFailure());
    if (std::exchange(sight.undrawn, why) == why || std::exchange(sightsChanged_, true)) return;
    QMetaObject::invokeMethod(this, &ImagePanel::ShowSights, Qt::QueuedConnection);
}

void ImagePanel::ShowSights() {
    sightsChanged_ = false;
    filling_ = true;
    for (std::size_t i = 0; i < images_.size(); ++i) {
        const Image& image = images_[i];
        if (QListWidgetItem* item = list_->item(RowOf(image.id))) item->setText(RowText(image));
        const auto sight = sights_.find(image.id);
        if (sight == sights_.end() || !image.shown || !sight->second.placed || sight->second.undrawn.isEmpty()) continue;
        if (!told_.insert(image.id).second) continue;
        emit Said(tr("%1 is not drawn: %2. Zoom in; if that does not help, remove the image and add it again.")
                      .arg(QFileInfo(image.path).fileName(), sight->second.undrawn));
    }
    filling_ = false;
}

bool ImagePanel::LoadAll(bool canCancel) {
    map_.Call("OrvTermRast");
    sights_.clear();
    if (images_.empty()) return true;
    WorkProgress progress(*map_.window(), tr("Loading images…"), canCancel);
    map_.Call("OrvInitRast", {static_cast<int>(images_.size())});
    for (std::size_t i = 0; i < images_.size(); ++i) {
        Image& image = images_[i];
        const int slot = static_cast<int>(i);
        if (!progress.Tell(static_cast<double>(i) / static_cast<double>(images_.size())) && canCancel) return false;
        loading_ = image.id;
        image.loaded = map_.Call("OrvLoadRast", {slot, image.path}).toBool();
        if (!image.loaded || !image.shown) map_.Call("OrvRastSetDispMode", {slot, false});
        if (!image.loaded || !image.points) continue;
        const auto [first, second] = CornersOf(*image.points);
        map_.Call("OrvSetRastCP1", {slot, first.pixel.x(), first.pixel.y(), first.place.x(), first.place.y()});
        map_.Call("OrvSetRastCP2", {slot, second.pixel.x(), second.pixel.y(), second.place.x(), second.place.y()});
        map_.Call("OrvCalcCorrect2Rast", {slot});
    }
    return true;
}

namespace {

/// Why an image did not come, and what to do. The reason is that of the last load.
QString WhyNot(const QString& path, bool lacksLibrary) {
    if (lacksLibrary) return ImagePanel::tr("No images can be shown: %1.").arg(Words(RasterLibraryLack()));
    return ImagePanel::tr(
               "%1 cannot be shown: %2.\nLook whether the file is there and whole, or save it as a TIFF or PNG and add "
               "that.")
        .arg(path, Words(RasterLibraryFailure()));
}

}  // namespace

QString ImagePanel::Add(const QString& path) {
    if (WorkProgress::IsRunning()) return tr("other work is running");
    if (!EncodeCp932(path.toStdString()))
        return tr("The name %1 has a character that maps cannot hold; rename the file.").arg(path);
    const State before = Now();
    images_.push_back({++lastId_, QFileInfo(path).absoluteFilePath(), true, false, std::nullopt});
    lacksLibrary_ = false;
    const bool whole = LoadAll(true);
    QString why;
    if (whole && images_.back().loaded) {
        Remember(tr("adding an image"), before);
        if (!sights_[images_.back().id].placed) {
            emit Said(tr("%1 does not say where it lies, so it is not seen yet. \"Place…\" gives it a place by two points.")
                          .arg(QFileInfo(path).fileName()));
        }
    } else {
        if (whole) why = WhyNot(path, lacksLibrary_);
        images_.pop_back();
        LoadAll();
    }
    ShowList(0);
    map_.Call("OrvReDraw");
    return why;
}

void ImagePanel::AskAdd() {
    const QString path = QFileDialog::getOpenFileName(
        window(), tr("Show an image with the map"), LastFolder(),
        tr("Images") + " (*.tif *.tiff *.png *.jpg *.jpeg *.bmp *.jp2 *.vrt);;" + tr("All files") + " (*)");
    if (path.isEmpty()) return;
    NoteFolderOf(path);
    const QString why = Add(path);
    if (!why.isEmpty()) QMessageBox::warning(window(), "ORVANE4", why);
}

void ImagePanel::Remove(int row) {
    if (!IsRow(row)) return;
    const State before = Now();
    StopPlacing();
    images_.erase(images_.begin() + static_cast<std::ptrdiff_t>(SlotOf(row)));
    LoadAll();
    ShowList((std::min)(row, static_cast<int>(images_.size()) - 1));
    Remember(tr("taking an image away"), before);
    map_.Call("OrvReDraw");
}

void ImagePanel::Move(int row, bool up) {
    const int other = row + (up ? -1 : 1);
    if (!IsRow(row) || !IsRow(other)) return;
    const State before = Now();
    std::swap(images_[SlotOf(row)], images_[SlotOf(other)]);
    LoadAll();
    ShowList(other);
    Remember(tr("order of the images"), before);
    map_.Call("OrvReDraw");
}

void ImagePanel::SetShown(int row, bool shown) {
    if (!IsRow(row)) return;
    if (!images_[SlotOf(row)].loaded || images_[SlotOf(row)].shown == shown) return;
    const State before = Now();
    images_[SlotOf(row)].shown = shown;
    ShowSights();
    Remember(tr("showing an image"), before);
    map_.Call("OrvRastSetDispMode", {static_cast<int>(SlotOf(row)), shown});
    map_.Call("OrvReDraw");
}

void ImagePanel::SetOnTop(bool onTop) {
    const State before{images_, !onTop};
    const bool changes = (map_.Control().rastOnTop == 1) != onTop;
    level_->setCurrentIndex(onTop ? 1 : 0);
    map_.Call("OrvDspRastMode", {onTop});
    map_.Call("OrvReDraw");
    if (changes) Remember(tr("level of the images"), before);
}

bool ImagePanel::Place(int row, const std::array<ImagePoint, 2>& points) {
    if (!IsRow(row) || points[0].pixel == points[1].pixel || points[0].place == points[1].place) return false;
    const State before = Now();
    images_[SlotOf(row)].points = points;
    LoadAll();
    ShowList(row);
    Remember(tr("placing an image"), before);
    map_.Call("OrvReDraw");
    return true;
}

}  // namespace orvane
