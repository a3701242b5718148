// The map control as a widget that any Qt 6 program places on a form.
//
// Its automation properties are the widget's properties, its events are signals, and its methods are called by their names.
// Names, units and answers are those of the automation surface (docs/reference.md). One pixel of the map is one pixel of the
// screen whatever the desktop's scaling is, so positions in calls and signals are device pixels of the widget.
//
// As on every form, the map begins with the call of OrvInit. The host may do anything in a slot, also delete the widget.
#pragma once

#include <QImage>
#include <QVariantList>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <span>

namespace orvane {

class COrvane4Ctrl;
class Variant;

class OrvaneWidget : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool ExecRun READ ExecRun WRITE SetExecRun)
    Q_PROPERTY(bool DebugMode READ DebugMode WRITE SetDebugMode)
    Q_PROPERTY(int RunMode READ RunMode WRITE SetRunMode)
    Q_PROPERTY(int ScrollMode READ ScrollMode WRITE SetScrollMode)
    Q_PROPERTY(double ScaleX READ ScaleX WRITE SetScaleX)
    Q_PROPERTY(double ScaleY READ ScaleY WRITE SetScaleY)
    Q_PROPERTY(double Rotate READ Rotate WRITE SetRotate)
    Q_PROPERTY(int Zoom READ Zoom WRITE SetZoom NOTIFY OnZoomChange)
    Q_PROPERTY(bool MapDraw READ MapDraw WRITE SetMapDraw)
    Q_PROPERTY(int ScaleBarMode READ ScaleBarMode WRITE SetScaleBarMode)
    Q_PROPERTY(int MemHandle READ MemHandle WRITE SetMemHandle)
    Q_PROPERTY(int MemCnt READ MemCnt WRITE SetMemCnt)
    Q_PROPERTY(int GetDC READ GetDC)
    Q_PROPERTY(uint ActiveColor READ ActiveColor WRITE SetActiveColor)
    Q_PROPERTY(double AreaTop READ AreaTop WRITE SetAreaTop)
    Q_PROPERTY(double AreaBottom READ AreaBottom WRITE SetAreaBottom)
    Q_PROPERTY(double AreaLeft READ AreaLeft WRITE SetAreaLeft)
    Q_PROPERTY(double AreaRight READ AreaRight WRITE SetAreaRight)
    Q_PROPERTY(int ActivePointType READ ActivePointType WRITE SetActivePointType)
    Q_PROPERTY(bool OrgStrVisible READ OrgStrVisible WRITE SetOrgStrVisible)
    Q_PROPERTY(bool LineTagMode READ LineTagMode WRITE SetLineTagMode)
    Q_PROPERTY(bool DigStrVisible READ DigStrVisible WRITE SetDigStrVisible)
    Q_PROPERTY(bool StrVisible READ StrVisible WRITE SetStrVisible)
    Q_PROPERTY(bool CutSameString READ CutSameString WRITE SetCutSameString)

public:
    explicit OrvaneWidget(QWidget* parent = nullptr);
    ~OrvaneWidget() override;

    /// Calls a method, or reads a property, by its name, without regard to ASCII case, with the inputs in order; a property with
    /// one value is written. Inputs are truths, numbers, texts and lists. The answer is the result; a member with outputs answers
    /// a list: the result, if it has one, then each output. A call that is not as declared does nothing, answers an invalid value
    /// and says why in `error`, or where there is none, as a warning of the program.
    Q_INVOKABLE QVariant Call(const QString& member, const QVariantList& inputs = {}) { return Call(member, inputs, nullptr); }
    QVariant Call(const QString& member, const QVariantList& inputs, QString* error);

    // The properties. Map units unless told; the limits have y downward. A colour is 0x00BBGGRR.
    bool ExecRun() const { return Get("ExecRun").toBool(); }
    void SetExecRun(bool v) { Put("ExecRun", v); }
    bool DebugMode() const { return Get("DebugMode").toBool(); }
    void SetDebugMode(bool v) { Put("DebugMode", v); }
    int RunMode() const { return Get("RunMode").toInt(); }  ///< what a click means, a number of T_OrvRunMode
    void SetRunMode(int v) { Put("RunMode", v); }
    int ScrollMode() const { return Get("ScrollMode").toInt(); }  ///< 10: the right button scrolls
    void SetScrollMode(int v) { Put("ScrollMode", v); }
    double ScaleX() const { return Get("ScaleX").toDouble(); }
    void SetScaleX(double v) { Put("ScaleX", v); }
    double ScaleY() const { return Get("ScaleY").toDouble(); }
    void SetScaleY(double v) { Put("ScaleY", v); }
    double Rotate() const { return Get("Rotate").toDouble(); }  ///< degrees
    void SetRotate(double v) { Put("Rotate", v); }
    int Zoom() const { return Get("Zoom").toInt(); }  ///< scale denominator
    void SetZoom(int v) { Put("Zoom", v); }
    bool MapDraw() const { return Get("MapDraw").toBool(); }
    void SetMapDraw(bool v) { Put("MapDraw", v); }
    int ScaleBarMode() const { return Get("ScaleBarMode").toInt(); }
    void SetScaleBarMode(int v) { Put("ScaleBarMode", v); }
    int MemHandle() const { return Get("MemHandle").toInt(); }
    void SetMemHandle(int v) { Put("MemHandle", v); }
    int MemCnt() const { return Get("MemCnt").toInt(); }
    void SetMemCnt(int v) { Put("MemCnt", v); }
    int GetDC() const { return Get("GetDC").toInt(); }
    uint ActiveColor() const { return Get("ActiveColor").toUInt(); }
    void SetActiveColor(uint v) { Put("ActiveColor", v); }
    double AreaTop() const { return Get("AreaTop").toDouble(); }
    void SetAreaTop(double v) { Put("AreaTop", v); }
    double AreaBottom() const { return Get("AreaBottom").toDouble(); }
    void SetAreaBottom(double v) { Put("AreaBottom", v); }
    double AreaLeft() const { return Get("AreaLeft").toDouble(); }
    void SetAreaLeft(double v) { Put("AreaLeft", v); }
    double AreaRight() const { return Get("AreaRight").toDouble(); }
    void SetAreaRight(double v) { Put("AreaRight", v); }
    int ActivePointType() const { return Get("ActivePointType").toInt(); }
    void SetActivePointType(int v) { Put("ActivePointType", v); }
    bool OrgStrVisible() const { return Get("OrgStrVisible").toBool(); }
    void SetOrgStrVisible(bool v) { Put("OrgStrVisible", v); }
    bool LineTagMode() const { return Get("LineTagMode").toBool(); }
    void SetLineTagMode(bool v) { Put("LineTagMode", v); }
    bool DigStrVisible() const { return Get("DigStrVisible").toBool(); }
    void SetDigStrVisible(bool v) { Put("DigStrVisible", v); }
    bool StrVisible() const { return Get("StrVisible").toBool(); }
    void SetStrVisible(bool v) { Put("StrVisible", v); }
    bool CutSameString() const { return Get("CutSameString").toBool(); }
    void SetCutSameString(bool v) { Put("CutSameString", v); }

    /// Paints at once what was asked for, so that the control has its buffers before a call that needs them.
    void PaintNow();
    /// The pixels of the client area, as many as the screen has there.
    const QImage& Picture() const;
    /// The control itself, for hosts in C++ that read more than the surface tells.
    COrvane4Ctrl& Control() const;

    QSize sizeHint() const override { return {640, 480}; }

signals:
    void OnZoomChange(int Zoom);
    void OnDataCmd(const QString& execName, const QString& sendName, const QString& SendParm, int datNo, const QString& layCd);
    void MouseDown(short Button, short Shift, int x, int y);
    void MouseUp(short Button, short Shift, int x, int y);
    void MouseMove(short Button, short Shift, int x, int y);
    void OnOrgDataClick(int ID, int x, int y);
    void OnOrgNearPtClick(int idx, short cnt, double nearX, double nearY, int px, int py);
    void OnOrgPointClick(int ID, short idx, int x, int y);
    void OnHintStart(int datNo, const QString& code, int meshNo, int x, int y);
    void OnDataClick(int datNo, const QString& code, int meshNo, int x, int y);
    void OnNearPtClick(int idx, short cnt, int meshNo, double nearX, double nearY, int px, int py);
    void OnDataDblClick(int datNo, const QString& code, int meshNo, int x, int y);
    void OnEditorEnd(const QString& code, int meshNo, int datID, int cnt, int editType);
    void OnEditorStart(const QString& code, int meshNo, int datID, int cnt, int editType);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Core;
    struct Mouse;

    QVariant Get(const char* property) const;
    void Put(const char* property, const QVariant& value);
    void TakeNewSize();
    Mouse Follow(const QMouseEvent& event);
    void EmitEvent(std::int32_t eventDispid, std::span<const Variant> args);

    // Shared with every call that is on the stack: it outlives a widget that a slot deletes.
    std::shared_ptr<Core> core_;
    int wheelRest_ = 0;
};

}  // namespace orvane
