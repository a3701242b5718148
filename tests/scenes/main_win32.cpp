// Draws a scene by GDI into memory.
#include "platform/win32/win32_context.h"
#include "platform/win32/win32_files.h"
#include "tests/scenes/player.h"

int main(int argc, char** argv) {
    using namespace orvane;
    Win32Files files;
    SceneDevice device{Win32Context::InMemory(std::make_shared<Win32Shared>(files)), [](Bitmap& bitmap) -> const std::uint32_t* {
                           GdiFlush();
                           return static_cast<Win32Bitmap&>(bitmap).Pixels();
                       }};
    return PlayScene(device, argc, argv);
}
