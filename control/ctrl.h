// The map control: the one object that a host creates on a form.
//
// It holds the store, the view and the two off-screen buffers, and everything it does happens inside an automation call, a
// window message or a paint. Coordinates called "map" have y growing to the north; the view keeps its y flipped, downward.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "control/edit_record.h"
#include "control/input_constants.h"
#include "control/input_state.h"
#include "platform/device_context.h"
#include "platform/files.h"
#include "platform/variant.h"
#include "platform/window.h"
#include "raster/raster_slots.h"
#include "select/near_org_point.h"
#include "select/pick.h"
#include "store/cdigmem.h"
#include "store/frame_target.h"

namespace orvane {

enum class RectZoomMode : std::int32_t { Off = 0, ZoomUp = 10, ZoomDown = 20 };
enum class WheelZoomMode : std::int32_t { Off = 0, Center = 1, Mouse = 2 };

/// Hears what the control tells its host. Each call runs host code, which may call anything back.
class ControlEvents {
public:
    ControlEvents() = default;
    ControlEvents(const ControlEvents&) = delete;
    ControlEvents& operator=(const ControlEvents&) = delete;
    virtual ~ControlEvents() = default;
    /// One event with its arguments in their declared order. It must not throw.
    virtual void Fire(std::int32_t eventDispid, std::span<const Variant> args) = 0;
};

/// Where the persisted state goes to and comes from. One exchange serves loading and saving.
class PropertyExchange {
public:
    PropertyExchange() = default;
    PropertyExchange(const PropertyExchange&) = delete;
    PropertyExchange& operator=(const PropertyExchange&) = delete;
    virtual ~PropertyExchange() = default;
    /// `version` is 0x00010000; with `loadDefault` a missing value loads as its default.
    virtual void ExchangeVersion(std::uint32_t version, bool loadDefault) = 0;
    /// Loads into or saves from `value`.
    virtual void ExchangeLong(std::string_view name, std::int32_t& value, std::int32_t defaultValue) = 0;
};

struct ControlDeleter;
class COrvane4Ctrl;
/// Owns a control. When it lets go inside a call of the control, destruction waits for the outermost call to return.
using ControlPtr = std::unique_ptr<COrvane4Ctrl, ControlDeleter>;

class COrvane4Ctrl {
public:
    /// `window` and `files` must outlive the control.
    static ControlPtr Create(Window& window, Files& files);
    COrvane4Ctrl(const COrvane4Ctrl&) = delete;
    COrvane4Ctrl& operator=(const COrvane4Ctrl&) = delete;

    /// Every way into the control (automation, message, paint) holds one of these, so that a destruction asked for by host
    /// code waits until nothing of the control stands on the call stack.
    class Scope {
    public:
        explicit Scope(COrvane4Ctrl& ctrl);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        COrvane4Ctrl& ctrl_;
    };

    /// Who hears the events from now on; null for nobody. The listener must stay until it is taken away or the control goes.
    void SetEvents(ControlEvents* events) { events_ = events; }
    /// Who is asked from time to time during overlays and relation tests whether to go on, with how much is done from 0 to 1;
    /// empty for nobody. It may call anything. On false the member ends with its failure value: no polygon is stored, and no item
    /// is active.
    using WorkProgress = std::function<bool(double done)>;
    void SetProgress(WorkProgress progress) { progress_ = std::move(progress); }
    const WorkProgress& Progress() const { return progress_; }
    /// Set by every property setter and by what the descriptions of the members name; a host clears it after saving.
    bool Modified() const { return modified_; }
    void SetModified(bool modified) { modified_ = modified; }

    // --- Lifecycle (lifecycle.cpp) --------------------------------------------------------------------------------------
    /// Starts over with an empty store and the view's starting values, keeps the buffers, and asks for a paint. Always true.
    bool RDMInit();
    /// Ends the raster images. Nothing is redrawn, and the map stays until the next init.
    void RDMTerm();
    /// A paint message. `dc` belongs to the window; rectangles are client pixels.
    void OnDraw(DeviceContext& dc, const Rect& bounds, const Rect& invalid);
    /// Loads or saves the persisted state: the zoom alone. A loaded zoom is taken unchecked and lasts until the next init.
    void DoPropExchange(PropertyExchange& exchange);
    /// The stock method: asks for a paint and returns.
    void Refresh();
    std::int32_t CurrentDrawState() const { return drawState_; }
    std::int32_t BufferState() const { return bufferState_; }
    /// The buffers, or null before the first paint.
    DeviceContext* BaseDC() { return baseDC_.get(); }
    DeviceContext* TopDC() { return topDC_.get(); }
    /// The number of BaseDC for hosts; 0 before the first paint.
    std::int32_t BaseDcHandle() const { return bufferState_ == 0 ? baseHandle_ : 0; }

    // --- Frame (frame.cpp, scroll_frame.cpp, user_dc.cpp) ---------------------------------------------------------------
    /// The normal repaint: mode 0 composes the whole map, any other only lays the overlay figures anew.
    void Redraw(DeviceContext& dc, std::int32_t mode);
    /// The same on a context of the window, acquired and released here.
    void RedrawWindow(std::int32_t mode);
    /// The scroll repaint: the view already stands at its new position, the arguments tell the old one.
    void RedrawScroll(DeviceContext& dc, double oldX, double oldY);
    /// One frame straight into a foreign context, centred on (x, y) in the flipped sense.
    void DrawUserDc(DeviceContext& dc, const Rect& rect, double x, double y, std::int32_t zoom, std::int32_t type);
    /// DrawUserDc on a host's context by its number, centred on the corner of the control's own view. The four numbers are read
    /// in the order given, as left, top, right, bottom. 0 and unknown context numbers draw nothing.
    void UserDcDraw(std::int32_t userDC, std::int32_t top, std::int32_t left, std::int32_t bottom, std::int32_t right,
                    std::int32_t type);
    /// The same centred on the map point (x, y), y to the north, at a scale of its own; the four numbers are read by their names.
    void UserDcDrawEx(std::int32_t userDC, std::int32_t top, std::int32_t left, std::int32_t bottom, std::int32_t right, double x,
                      double y, std::int32_t zoom, std::int32_t type);
    /// RedrawWindow with mode 0 once the control has been painted.
    void RDMReDraw();
    /// One line between two device pixels on a host's context, in a line type. `clip` bounds the figures of a pattern, its right
    /// and bottom multiplied by the whole number of times that the device is finer than the screen, as the width is; the ends of
    /// the line are taken as they are. The context keeps the copying raster operation. Nothing is drawn before the first paint,
    /// or on 0 and unknown context numbers. (draw_line.cpp)
    void DrawLine(std::int32_t userDC, const Rect& clip, Point from, Point to, std::int32_t lineType, std::int32_t lineWidth,
                  Rgb lineColor);

    // --- View (view.cpp, scroll.cpp, zoom.cpp) --------------------------------------------------------------------------
    double ScreenToWorldX(double px) const { return store.view.PixToWorldF(px) + viewX; }
    double ScreenToWorldY(double py) const { return -(store.view.PixToWorldF(py) + viewY); }
    /// Map point under a client pixel with rotation, stretch and offsets taken back. The stretch is taken back before the view's
    /// position is added, so this inverts what drawing does only while both scales are 1 and the pixel origin is 0.
    void FullInverse(std::int32_t px, std::int32_t py, double& mapX, double& mapY) const;
    /// Writes the scale denominator, held to 1..50000000, about the centre of the view. Fires OnZoomChange; repaints nothing and
    /// asks no area limits.
    void SetZoom(std::int32_t zoom);
    /// Changes the zoom so that the map point under a client pixel stays there.
    void ZoomAtPixel(std::int32_t zoom, std::int32_t px, std::int32_t py);
    // Writes of the view's other properties: none repaints, checks its value or moves the view.
    void SetScaleX(double v);
    void SetScaleY(double v);
    void SetRotate(double degrees);
    void SetAreaTop(double v);
    void SetAreaBottom(double v);
    void SetAreaLeft(double v);
    void SetAreaRight(double v);
    /// Centres the view on a map point within the limits, and repaints.
    void JumpTo(double mapX, double mapY);
    /// Makes an item active or not and jumps to the mean of its points. An activation first empties the active set, even when
    /// there is no such item.
    void MapJumpToData(std::string_view code, std::int32_t meshNo, std::int32_t datNo, bool active);
    /// Fits all data with a margin of `rate_percent` on each side; below 1 is no margin, above 50 counts as 50.
    void DspFit(std::int32_t rate_percent);
    /// Moves the view by map units, y downward, within the limits. 0 when the view cannot scroll at all, else 1.
    std::int32_t MoveView(double dx, double dy, bool redraw);
    /// One tick of the scroll with the right button, and of the pan with the left.
    void ScrollTick();
    void PanTick();
    /// Ends either scroll: the timer (1 or 11) stops and the base buffer is brought in line.
    void EndScroll(std::int32_t timerId);
    /// The rectangle that the operator dragged for a zoom, in client pixels.
    void RectZoomTo(Point start, Point end);
    /// `mode` 0 off, 1 about the centre, 2 about the cursor; any other changes nothing. A `rate` outside 0.01..0.5 is not taken.
    void SetWheelZoom(std::int32_t mode, double rate);
    /// A wheel step; `screen` in screen pixels. False when the message is to go to the default handler untouched.
    bool WheelZoom(std::int32_t delta, Point screen);

    // --- Map frame (frame_change.cpp) -------------------------------------------------------------------------------------
    /// Changes all data and the view between the mesh frame (0) and a plane rectangular zone (1), and repaints. The data comes
    /// back bit for bit, the view nearly; what was made meanwhile stays as it is. Nothing happens when the mode stands already,
    /// or for a zone outside 1 to 19; any other mode is stored and repaints. A host writes the four area limits of the frame to
    /// come before it calls, or the view stays at their edge.
    void ChgGeoFrame(std::int32_t mode, std::int32_t zone);

    // --- Input (input_buttons.cpp, input_move.cpp, input_timers.cpp) ------------------------------------------------------
    // One message of the window each. `flags` is a word of kMk... bits, compared as a whole; positions are client pixels but for
    // the wheel's. A shell passes every message on and takes no capture of its own: the default handling, which takes the mouse
    // and tells the host of MouseDown and MouseUp, comes last and is here. Each may run host code.
    void OnRButtonDown(std::uint32_t flags, Point at);
    void OnRButtonUp(std::uint32_t flags, Point at);
    void OnLButtonDown(std::uint32_t flags, Point at);
    void OnLButtonDblClk(std::uint32_t flags, Point at);
    void OnLButtonUp(std::uint32_t flags, Point at);
    void OnMouseMove(std::uint32_t flags, Point at);
    /// A key by its virtual key code.
    void OnKeyDown(std::uint32_t key);
    /// `delta` is positive away from the operator, 120 a notch; `screen` in screen pixels.
    void OnMouseWheel(std::uint32_t flags, std::int32_t delta, Point screen);
    /// A tick of one of the control's timers: 1, 2, 3 or 11. Any other number does nothing.
    void OnTimer(std::int32_t id);

    /// The vertex that the mouse drags, if it drags one.
    std::optional<OrgVertex> DraggedVertex() const {
        return orgMoving ? std::optional(OrgVertex{orgMoveID, orgMoveIndex}) : std::nullopt;
    }

    // --- Edit tools (edit_start.cpp, edit_*.cpp) --------------------------------------------------------------------------
    /// Starts the tool `editType` (a kRun... value) on an item, or with an empty code on the one that the operator picks. A tool
    /// that runs is dropped without showing its item again. 0, or -1 when refused.
    std::int32_t DigDatEditor(std::string_view code, std::int32_t meshNo, std::int32_t datID, std::int32_t editType);
    /// Cancels the running tool, as ESC does, and repaints.
    void CancelOrgEdit();
    /// A left click in the run modes of the tools. `dc` is a context of the window.
    void ToolClick(DeviceContext& dc, std::uint32_t flags, Point at);
    /// A mouse move in those run modes, after the MouseMove event and only while nothing scrolls.
    void ToolMove(std::uint32_t flags, Point at);
    /// The double click that ends the add tool (101), and the one that ends the point add tool (210).
    void FinishAddTool();
    void FinishPointAddTool();
    /// The Delete key in the point move tool; the repaint that follows is the caller's.
    void ToolDeleteKey(DeviceContext& dc);
    /// An ID above all others of the block. Without the block -1, which the operator is told; that message runs host code.
    std::int32_t GetFreeDigDatID(std::string_view code, std::int32_t meshNo);

    // --- Fields that the automation surface and the subjects read and write ----------------------------------------------
    CDigMem store;
    RasterSlots rasters;
    bool mapDraw = false;
    std::int32_t rastOnTop = 1;
    bool execRun = false;
    bool debugMode = false;
    std::int16_t runMode = 0;
    std::int16_t scrollMode = 0;
    std::int16_t scaleBarMode = 0;
    bool orgStrVisible = false;
    std::int32_t orgTopDrawID = 0;
    std::int32_t orgMoveID = 0;     ///< overlay figure whose point the mouse drags
    std::int32_t orgMoveIndex = 0;  ///< that point
    bool orgMoving = false;         ///< the two fields before count only while this is true
    std::uint8_t dataSelectMode = 1;
    InputState input;
    std::int32_t frameMode = 0;  ///< 0 mesh frame, 1 plane rectangular frame; an init leaves it alone
    std::int16_t frameZone = 0;  ///< 1 to 19 in the plane frame, 0 in the mesh frame
    EditRecord edit;
    double viewX = 0;  ///< map units of the client area's left top pixel
    double viewY = 0;  ///< flipped: map y negated
    double areaLeft = 0;
    double areaRight = 0;
    double areaTop = 0;  ///< limits on the view's flipped y
    double areaBottom = 0;
    std::int32_t dotPerM = 0;
    bool scrollActive = false;
    double lastMouseX = 0;  ///< client pixels
    double lastMouseY = 0;
    std::int32_t rectZoomMode = 0;
    std::int32_t wheelZoomMode = 1;
    double wheelRateUp = 1.2;
    double wheelRateDown = 0.8;
    double devOffX = 0;
    double devOffY = 0;
    double pendX = 0;  ///< pixels
    double pendY = 0;
    Rect drawArea;  ///< map units, y downward

    Window& window() { return window_; }
    Files& files() { return files_; }

private:
    friend struct ControlDeleter;
    friend class EditTools;
    COrvane4Ctrl(Window& window, Files& files);
    ~COrvane4Ctrl();

    void FirstPaint();
    bool MakeBuffers();
    void SearchWithMargin(const Rect& client);
    void CopyToScreen(DeviceContext& dc, const Rect& client);
    void FireZoomChange() { Fire(kOnZoomChange, {Variant(store.view.Zoom)}); }
    /// Tells the host of an event. It runs host code: afterwards nothing that was read from the store is to be trusted.
    void Fire(std::int32_t eventDispid, std::initializer_list<Variant> args);
    void FireItem(std::int32_t eventDispid, const FoundItem& item, Point at);
    /// The default handling of a button: 1 left, 2 right.
    void DefaultButtonDown(std::int16_t button, std::uint32_t flags, Point at);
    void DefaultButtonUp(std::int16_t button, std::uint32_t flags, Point at);
    void BeginScroll(Point at, CursorShape shape, std::int32_t timerId, std::int32_t period_ms);
    void BeginRect(Point at);
    void TrackRect(Point at);
    void EndRect(std::uint32_t flags, Point at);
    /// Whether a drag from `start` to `end` is too short to be a rectangle; the picture is then restored.
    bool EndSmallDrag(Point start, Point end);
    void DrawRubberRect();
    void SelectByClick(std::uint32_t flags, Point at);
    // Clicks in the modes of the overlay figures. The number of what was met, -1 for nothing.
    std::int32_t FigureClick(std::uint32_t flags, Point at);
    std::int32_t PlainFigureClick(Point at);
    std::int32_t NearFigureClick(Point at);
    std::int32_t NearDataClick(Point at);
    void DragFigurePoint(Point at);
    void HintTick();
    PickPlace PlaceOfPicks() const { return {window_.ClientRect(), viewX, viewY, devOffX, devOffY}; }

    Window& window_;
    Files& files_;
    ControlEvents* events_ = nullptr;
    WorkProgress progress_;
    bool modified_ = false;
    std::int32_t callDepth_ = 0;
    bool dying_ = false;
    std::int32_t drawState_ = -1;
    std::int32_t bufferState_ = -1;
    std::unique_ptr<Bitmap> baseBitmap_;
    std::unique_ptr<Bitmap> topBitmap_;
    std::unique_ptr<DeviceContext> baseDC_;
    std::unique_ptr<DeviceContext> topDC_;
    std::int32_t baseHandle_ = 0;
};

struct ControlDeleter {
    void operator()(COrvane4Ctrl* ctrl) const;
};

}  // namespace orvane
