// Draws a scene by the qt back end.
#include "platform/files_std.h"
#include "platform/qt/qt_context.h"
#include "tests/scenes/player.h"

int main(int argc, char** argv) {
    using namespace orvane;
    StdFiles files;
    auto context = std::make_unique<QtContext>();
    context->SetBitmapFiles(std::make_shared<BitmapFiles>(files));
    SceneDevice device{std::move(context), [](Bitmap& bitmap) {
                           return reinterpret_cast<const std::uint32_t*>(static_cast<QtBitmap&>(bitmap).Image().constBits());
                       }};
    return PlayScene(device, argc, argv);
}
