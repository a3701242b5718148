#include "hosts/common/progress_bar.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "platform/to_int.h"

namespace orvane {

namespace {

constexpr int kBarLength = 30;

}  // namespace

ProgressBar::ProgressBar(std::ostream& out, bool isTerminal, std::string label)
    : out_(out), isTerminal_(isTerminal), label_(std::move(label)) {
    if (!isTerminal_) out_ << label_ << std::endl;
}

ProgressBar::~ProgressBar() { Clear(); }

void ProgressBar::Show(double fraction) {
    const int percent = std::clamp(TruncToInt32(fraction * 100), 0, 100);
    if (!isTerminal_ || percent == shown_percent_) return;
    shown_percent_ = percent;
    const auto full = static_cast<std::size_t>(percent * kBarLength / 100);
    out_ << '\r' << label_ << " [" << std::string(full, '#') << std::string(kBarLength - full, '.') << "] " << percent
         << " %\x1b[K" << std::flush;
}

void ProgressBar::Clear() {
    if (isTerminal_ && shown_percent_ >= 0) out_ << "\r\x1b[K" << std::flush;
    shown_percent_ = -1;
}

bool ErrorStreamIsTerminal() { return isatty(STDERR_FILENO) != 0; }

}  // namespace orvane
