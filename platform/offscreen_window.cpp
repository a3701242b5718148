#include "platform/offscreen_window.h"

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

// No timer of the platform ticks faster than this.
constexpr std::int32_t kShortestPeriod_ms = 10;

double Period_s(std::int32_t period_ms) { return (std::max)(period_ms, kShortestPeriod_ms) / 1000.0; }

// Through a copy: what the hook runs may put another hook in its place.
template <class Hook, class... Args>
void Call(Hook hook, const Args&... args) {
    if (hook) hook(args...);
}

// Positions wrap as the platform's do: a cursor may be set anywhere.
std::int32_t Sum(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

std::int32_t Difference(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

}  // namespace

OffscreenWindow::OffscreenWindow(DeviceContext& device, std::int32_t width_px, std::int32_t height_px) : device_(device) {
    Resize(width_px, height_px);
}

void OffscreenWindow::Resize(std::int32_t width_px, std::int32_t height_px) {
    const std::int32_t width = (std::max)(width_px, 0);
    const std::int32_t height = (std::max)(height_px, 0);
    if (width == width_px_ && height == height_px_) return;
    Bitmap* next = SurfaceOf(width, height);
    if (next != nullptr) {
        auto target = device_.CreateCompatibleDC();
        target->SelectBitmap(next);
        target->PatBlt(0, 0, width, height, Rop3::Whiteness);
        if (current_ != nullptr) {
            auto source = device_.CreateCompatibleDC();
            source->SelectBitmap(current_);
            target->BitBlt(0, 0, (std::min)(width, width_px_), (std::min)(height, height_px_), *source, 0, 0, Rop3::SrcCopy);
        }
    }
    width_px_ = width;
    height_px_ = height;
    current_ = next;
}

Bitmap* OffscreenWindow::SurfaceOf(std::int32_t width_px, std::int32_t height_px) {
    for (const Surface& surface : surfaces_) {
        if (surface.width_px == width_px && surface.height_px == height_px) return surface.bitmap.get();
    }
    auto bitmap = device_.CreateCompatibleBitmap(width_px, height_px);
    if (bitmap == nullptr) return nullptr;
    surfaces_.push_back({width_px, height_px, std::move(bitmap)});
    return surfaces_.back().bitmap.get();
}

void OffscreenWindow::DropFormerSurfaces() {
    std::erase_if(surfaces_, [this](const Surface& surface) { return surface.bitmap.get() != current_; });
}

void OffscreenWindow::Advance(double seconds) {
    const double end_s = clock_s + seconds;
    for (;;) {
        const auto next = std::min_element(timers_.begin(), timers_.end(),
                                           [](const auto& a, const auto& b) { return a.second.due_s < b.second.due_s; });
        if (next == timers_.end() || !(next->second.due_s <= end_s)) break;
        const std::int32_t id = next->first;
        clock_s = (std::max)(clock_s, next->second.due_s);
        next->second.due_s = clock_s + Period_s(next->second.period_ms);
        Call(onTimer, id);
    }
    clock_s = (std::max)(clock_s, end_s);
}

bool OffscreenWindow::TakePaintRequest() { return std::exchange(paintAsked_, false); }

std::unique_ptr<DeviceContext> OffscreenWindow::AcquireDC() {
    ++acquireCnt;
    auto context = device_.CreateCompatibleDC();
    context->SelectBitmap(current_);
    return dressContext ? dressContext(std::move(context)) : std::move(context);
}

DeviceContext& OffscreenWindow::Desktop() { return desktop != nullptr ? *desktop : device_; }

Rect OffscreenWindow::WindowRect() const {
    return {position.x, position.y, Sum(position.x, width_px_), Sum(position.y, height_px_)};
}

Point OffscreenWindow::ClientToScreen(Point client) const { return {Sum(client.x, position.x), Sum(client.y, position.y)}; }

Point OffscreenWindow::ScreenToClient(Point screen) const {
    return {Difference(screen.x, position.x), Difference(screen.y, position.y)};
}

void OffscreenWindow::Invalidate() {
    ++invalidateCnt;
    paintAsked_ = true;
    Call(onInvalidate);
}

void OffscreenWindow::StartTimer(std::int32_t id, std::int32_t period_ms) {
    timers_[id] = {period_ms, clock_s + Period_s(period_ms)};
}

void OffscreenWindow::ShowMessage(std::string_view text, std::string_view title, MessageIcon icon) {
    const ShownMessage shown{std::string(text), std::string(title), icon};
    messages.push_back(shown);
    Call(onMessage, shown);
}

void OffscreenWindow::ShowWaitCursor(bool on) {
    waitCursorDepth += on ? 1 : -1;
    waitCursorCnt += on ? 1 : 0;
}

void OffscreenWindow::PumpMessages() {
    ++pumpCnt;
    Call(onPumpMessages);
}

}  // namespace orvane
