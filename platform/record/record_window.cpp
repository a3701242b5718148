#include "platform/record/record_window.h"

#include <utility>

namespace orvane {

void RecordWindow(OffscreenWindow& window, RecordContext& desktop) {
    window.desktop = &desktop;
    window.dressContext = [list = desktop.List()](std::unique_ptr<DeviceContext> dc) -> std::unique_ptr<DeviceContext> {
        return std::make_unique<RecordContext>(list, std::move(dc), "window");
    };
}

}  // namespace orvane
