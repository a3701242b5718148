// The control's events as signals of the widget.
#include <string>

#include "control/input_constants.h"
#include "hosts/qt/orvane_widget.h"
#include "hosts/qt/qt_values.h"

namespace orvane {

namespace {

/// The arguments of one event by position; one that is missing reads as 0 or as an empty text.
class EventArgs {
public:
    explicit EventArgs(std::span<const Variant> args) : args_(args) {}

    int I4(std::size_t i) const {
        std::int32_t v = 0;
        if (i < args_.size()) args_[i].ToI4(v);
        return v;
    }
    short I2(std::size_t i) const { return static_cast<short>(I4(i)); }
    double R8(std::size_t i) const {
        double v = 0;
        if (i < args_.size()) args_[i].ToR8(v);
        return v;
    }
    QString Text(std::size_t i) const {
        std::string bytes;
        if (i < args_.size()) args_[i].ToBytes(bytes);
        return ToQString(bytes);
    }

private:
    std::span<const Variant> args_;
};

}  // namespace

void OrvaneWidget::EmitEvent(std::int32_t eventDispid, std::span<const Variant> args) {
    const EventArgs a(args);
    switch (eventDispid) {
        case kOnZoomChange:
            return OnZoomChange(a.I4(0));
        case kMouseDown:
            return MouseDown(a.I2(0), a.I2(1), a.I4(2), a.I4(3));
        case kMouseUp:
            return MouseUp(a.I2(0), a.I2(1), a.I4(2), a.I4(3));
        case kMouseMove:
            return MouseMove(a.I2(0), a.I2(1), a.I4(2), a.I4(3));
        case kOnOrgDataClick:
            return OnOrgDataClick(a.I4(0), a.I4(1), a.I4(2));
        case kOnOrgNearPtClick:
            return OnOrgNearPtClick(a.I4(0), a.I2(1), a.R8(2), a.R8(3), a.I4(4), a.I4(5));
        case kOnOrgPointClick:
            return OnOrgPointClick(a.I4(0), a.I2(1), a.I4(2), a.I4(3));
        case kOnHintStart:
            return OnHintStart(a.I4(0), a.Text(1), a.I4(2), a.I4(3), a.I4(4));
        case kOnDataClick:
            return OnDataClick(a.I4(0), a.Text(1), a.I4(2), a.I4(3), a.I4(4));
        case kOnNearPtClick:
            return OnNearPtClick(a.I4(0), a.I2(1), a.I4(2), a.R8(3), a.R8(4), a.I4(5), a.I4(6));
        case kOnDataDblClick:
            return OnDataDblClick(a.I4(0), a.Text(1), a.I4(2), a.I4(3), a.I4(4));
        case kOnEditorEnd:
            return OnEditorEnd(a.Text(0), a.I4(1), a.I4(2), a.I4(3), a.I4(4));
        case kOnEditorStart:
            return OnEditorStart(a.Text(0), a.I4(1), a.I4(2), a.I4(3), a.I4(4));
        default:
            return;  // OnDataCmd is declared for hosts, and nothing fires it
    }
}

}  // namespace orvane
