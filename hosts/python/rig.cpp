#include "hosts/python/rig.h"

#include <algorithm>

#include "control/ctrl.h"
#include "hosts/common/raster_library.h"
#include "hosts/python/values.h"
#include "platform/context_registry.h"
#include "platform/cp932.h"
#include "platform/device_numbers.h"
#include "platform/qt/qt_context.h"
#include "platform/record/record_context.h"

namespace orvane::python {

namespace {

py::object PenTuple(const Pen& pen) {
    py::list dashes;
    for (std::size_t i = 0; i < pen.dashCnt; ++i) dashes.append(pen.dashes[i]);
    return py::make_tuple("Pen", static_cast<std::uint32_t>(pen.style), pen.width_px, pen.color, dashes);
}

py::object BrushTuple(const Brush& brush) {
    return py::make_tuple("Brush", static_cast<std::uint32_t>(brush.style), brush.color, static_cast<std::uint32_t>(brush.hatch));
}

/// The name without the zeros behind it; a name of full length has none.
std::string FaceBytes(const Font& font) {
    return {font.faceName.begin(), std::find(font.faceName.begin(), font.faceName.end(), '\0')};
}

py::object FontTuple(const Font& font) {
    return py::make_tuple("Font", font.height_px, font.width_px, font.escapement_tenths, font.orientation_tenths, font.weight,
                          font.italic, font.underline, font.strikeOut, font.charSet, py::bytes(FaceBytes(font)));
}

struct ValueToPython {
    const VerbList& list;

    py::object operator()(std::int64_t v) const { return py::int_(v); }
    py::object operator()(const Rect& r) const { return py::make_tuple(r.left, r.top, r.right, r.bottom); }
    py::object operator()(const std::vector<Point>& pts) const {
        py::list out;
        for (const Point& p : pts) out.append(py::make_tuple(p.x, p.y));
        return out;
    }
    py::object operator()(const std::vector<std::int32_t>& counts) const {
        py::list out;
        for (const std::int32_t count : counts) out.append(count);
        return out;
    }
    py::object operator()(const Pen& pen) const { return PenTuple(pen); }
    py::object operator()(const Brush& brush) const { return BrushTuple(brush); }
    py::object operator()(const Font& font) const { return FontTuple(font); }
    py::object operator()(const std::string& text) const { return py::bytes(text); }
    py::object operator()(BitmapNumber bitmap) const { return py::make_tuple("Bitmap", bitmap.value); }
    py::object operator()(ContextNumber context) const { return ContextKey(context.value); }

    /// The label of a context, or its bare number.
    py::object ContextKey(std::int32_t number) const {
        const std::string name = list.ContextName(number);
        if (name == std::to_string(number)) return py::int_(number);
        return py::str(name);
    }
};

}  // namespace

py::list TakeVerbs(VerbList& verbs) {
    py::list out;
    const ValueToPython toPython{verbs};
    for (std::size_t i = 0; i < verbs.Size(); ++i) {
        const VerbCall call = verbs.Call(i);
        py::list values;
        for (const VerbValue& value : call.values) values.append(std::visit(toPython, value));
        out.append(py::make_tuple(toPython.ContextKey(call.context), std::string(call.name), values));
    }
    verbs.Clear();
    return out;
}

py::bytes PixelBytes(Bitmap* bitmap) {
    const auto* picture = dynamic_cast<const QtBitmap*>(bitmap);
    if (picture == nullptr) throw std::runtime_error("this device keeps no pixels; make the control with device=\"qt\"");
    const QImage& image = picture->Image();
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()) * 4);
    for (int y = 0; y < image.height(); ++y) {
        bytes.append(reinterpret_cast<const char*>(image.constScanLine(y)), static_cast<std::size_t>(image.width()) * 4);
    }
    return py::bytes(bytes);
}

Rig::Rig(int width_px, int height_px, const std::string& device) {
    if (width_px < 1 || height_px < 1 || width_px > 32767 || height_px > 32767) {
        throw py::value_error("width and height are between 1 and 32767 pixels");
    }
    MakeDevice(device);
    MakeWindow(width_px, height_px);
    ctrl_ = COrvane4Ctrl::Create(*window_, files_);
    ctrl_->SetEvents(this);
    ctrl_->rasters.SetMaker(RasterLibraryMaker());
}

void Rig::MakeDevice(const std::string& device) {
    if (device == "record") {
        verbs_ = std::make_shared<VerbList>();
        auto recorder = std::make_unique<RecordContext>(verbs_);
        const auto sizeOf = [pictures = pictures_](std::string_view fileName) {
            const std::shared_ptr<const FilePixels> file = pictures->Load(fileName);
            return file != nullptr ? TextSize{file->width_px, file->height_px} : TextSize{};
        };
        recorder->SetImageSizes(sizeOf);
        silent_.SetImageSizes(sizeOf);
        device_ = std::move(recorder);
    } else if (device == "qt") {
        auto painter = std::make_unique<QtContext>();
        painter->SetBitmapFiles(pictures_);
        device_ = std::move(painter);
    } else {
        throw py::value_error("device is \"qt\" or \"record\"");
    }
}

void Rig::MakeWindow(int width_px, int height_px) {
    if (verbs_ == nullptr) {
        window_ = std::make_unique<OffscreenWindow>(*device_, width_px, height_px);
        return;
    }
    window_ = std::make_unique<OffscreenWindow>(silent_, width_px, height_px);
    window_->desktop = device_.get();
    window_->dressContext = [verbs = verbs_](std::unique_ptr<DeviceContext> dc) -> std::unique_ptr<DeviceContext> {
        return std::make_unique<RecordContext>(verbs, std::move(dc), "window");
    };
}

Rig::~Rig() = default;

py::object Rig::Call(const Member& member, const py::args& args, InvokeKind kind) {
    std::vector<Argument> passed(member.args.size() + (kind == InvokeKind::Put ? 1 : 0));
    std::size_t next = 0;
    std::size_t inputs = 0;
    for (const Arg& arg : member.args) inputs += arg.IsInput() ? 1 : 0;
    if (kind == InvokeKind::Put) ++inputs;
    if (args.size() != inputs) {
        throw py::type_error(member.name + " takes " + std::to_string(inputs) + " arguments, " + std::to_string(args.size()) +
                             " were given");
    }
    for (std::size_t i = 0; i < member.args.size(); ++i) {
        if (member.args[i].IsInput()) SetInput(member.args[i], args[next++], passed[i]);
    }
    if (kind == InvokeKind::Put) {
        Arg value;
        value.name = "value";
        value.type = member.result;
        SetInput(value, args[next], passed.back());
    }
    MakeOutBuffers(*ctrl_, member, passed);
    const InvokeResult result = Invoke(*ctrl_, member, kind, passed);
    RaisePending();
    const auto named = [&](const char* words) {
        const std::string where = result.argIndex < member.args.size() ? member.args[result.argIndex].name : std::string("value");
        return member.name + ": the argument " + where + " " + words;
    };
    switch (result.status) {
        case InvokeStatus::Ok:
            break;
        case InvokeStatus::TypeMismatch:
            throw py::type_error(named("cannot be converted to its type"));
        case InvokeStatus::BufferTooShort:
            throw py::value_error(named("holds too few values"));
        case InvokeStatus::NotSupported:
            throw py::attribute_error(member.name + " cannot be written");
        case InvokeStatus::UnknownMember:
        case InvokeStatus::BadArgCount:
            throw py::type_error(member.name + " was not called as it is declared");
    }
    py::list out;
    const bool hasResult = member.result.kind != ValueKind::None;
    if (hasResult) out.append(FromResult(member.result, result.value));
    for (std::size_t i = 0; i < member.args.size(); ++i) {
        if (member.args[i].IsOutput()) out.append(GetOutput(member.args[i], passed[i]));
    }
    if (out.empty() || kind == InvokeKind::Put) return py::none();
    if (out.size() == 1 && hasResult) return out[0];
    return py::tuple(out);
}

py::object Rig::CallByName(const py::object& nameOrDispid, const py::args& args) {
    const bool byName = py::isinstance<py::str>(nameOrDispid);
    if (!byName && !py::isinstance<py::int_>(nameOrDispid)) throw py::type_error("a member is called by its name or its dispid");
    const Member* member =
        byName ? Surface().Find(nameOrDispid.cast<std::string>()) : Surface().Find(nameOrDispid.cast<std::int32_t>());
    if (member == nullptr) throw py::attribute_error("the control has no member " + std::string(py::str(nameOrDispid)));
    const bool writes = (member->kind == MemberKind::Property && args.size() == 1) || (member->indexed && args.size() == 2);
    return Call(*member, args, writes ? InvokeKind::Put : InvokeKind::Method);
}

void Rig::Connect(const std::string& event, py::function callable) {
    const Member* member = Surface().FindEvent(event);
    if (member == nullptr) throw py::attribute_error("the control has no event " + event);
    handlers_[member->dispid].push_back(std::move(callable));
}

void Rig::OnProgress(py::object callable) {
    if (!callable.is_none() && PyCallable_Check(callable.ptr()) == 0)
        throw py::type_error("on_progress takes a callable or None");
    progress_ = std::move(callable);
    if (progress_.is_none()) {
        ctrl_->SetProgress({});
    } else {
        ctrl_->SetProgress([this](double done) { return GoesOn(done); });
    }
}

bool Rig::GoesOn(double done) {
    if (progress_.is_none()) return true;
    const py::object asked = progress_;  // it may set another one
    try {
        return !asked(done).is(py::handle(Py_False));
    } catch (py::error_already_set& error) {
        if (!pending_) pending_ = std::move(error);
        return false;
    }
}

int Rig::VisitHandlers(visitproc visit, void* arg) const {
    Py_VISIT(progress_.ptr());
    for (const auto& [event, callables] : handlers_) {
        for (const py::function& callable : callables) Py_VISIT(callable.ptr());
    }
    return 0;
}

void Rig::Fire(std::int32_t eventDispid, std::span<const Variant> args) {
    const auto found = handlers_.find(eventDispid);
    if (found == handlers_.end()) return;
    // A handler may connect others, so the list at this moment is what hears the event.
    const std::vector<py::function> handlers = found->second;
    for (const py::function& handler : handlers) {
        try {
            py::list values;
            for (const Variant& arg : args) values.append(FromVariant(arg));
            handler(*values);
        } catch (py::error_already_set& error) {
            if (!pending_) pending_ = std::move(error);
        }
    }
}

void Rig::RaisePending() {
    if (!pending_) return;
    py::error_already_set error = std::move(*pending_);
    pending_.reset();
    throw error;
}

void Rig::Paint() {
    {
        const std::unique_ptr<DeviceContext> dc = window_->AcquireDC();
        const Rect client = window_->ClientRect();
        ctrl_->OnDraw(*dc, client, client);
        window_->TakePaintRequest();
    }
    RaisePending();
}

void Rig::Resize(int width_px, int height_px) {
    if (width_px < 1 || height_px < 1 || width_px > 32767 || height_px > 32767) {
        throw py::value_error("width and height are between 1 and 32767 pixels");
    }
    window_->Resize(width_px, height_px);
}

py::bytes Rig::Pixels() { return PixelBytes(window_->ClientBitmap()); }

void Rig::SavePng(const std::string& path) {
    const auto* picture = dynamic_cast<const QtBitmap*>(window_->ClientBitmap());
    if (picture == nullptr) throw std::runtime_error("this device keeps no pixels; make the control with device=\"qt\"");
    if (!picture->Image().save(QString::fromStdString(path), "PNG"))
        throw std::runtime_error("the picture could not be written: " + path);
}

py::list Rig::Verbs() {
    if (verbs_ == nullptr) throw std::runtime_error("this device records no verbs; make the control with device=\"record\"");
    NameBuffers();
    return TakeVerbs(*verbs_);
}

void Rig::NameBuffers() {
    if (auto* base = dynamic_cast<RecordContext*>(ctrl_->BaseDC())) base->SetLabel("base");
    if (auto* top = dynamic_cast<RecordContext*>(ctrl_->TopDC())) top->SetLabel("top");
}

py::list Rig::MessageBoxes() const {
    py::list out;
    for (const ShownMessage& message : window_->messages) {
        out.append(py::make_tuple(FromBytes(message.text), FromBytes(message.title), static_cast<std::uint32_t>(message.icon)));
    }
    return out;
}

py::dict Rig::Timers() const {
    py::dict out;
    for (const auto& [id, timer] : window_->Timers()) out[py::int_(id)] = timer.period_ms;
    return out;
}

ForeignContext::ForeignContext(int width_px, int height_px, int horzres_px, int horzsize_mm, int logpixels_dpi)
    : verbs_(std::make_shared<VerbList>()) {
    DeviceNumbers numbers;
    numbers.horzRes_px = horzres_px;
    numbers.horzSize_mm = horzsize_mm;
    numbers.logPixelsX_dpi = numbers.logPixelsY_dpi = logpixels_dpi;
    auto inner = std::make_unique<QtContext>(numbers);
    bitmap_ = inner->CreateCompatibleBitmap(width_px, height_px);
    if (bitmap_ == nullptr) throw py::value_error("no picture of that size can be made");
    inner->SelectBitmap(bitmap_.get());
    dc_ = std::make_unique<RecordContext>(verbs_, std::move(inner));
    handle_ = RegisterContext(*dc_);
}

ForeignContext::~ForeignContext() { UnregisterContext(handle_); }

}  // namespace orvane::python
