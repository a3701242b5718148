// How far long work has come, on a console.
#pragma once

#include <ostream>
#include <string>

namespace orvane {

class ProgressBar {
public:
    /// On a terminal a bar is drawn in place; elsewhere one plain line tells that the work has begun, and nothing more.
    ProgressBar(std::ostream& out, bool isTerminal, std::string label);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// `fraction` is 0 to 1; the line is written again only when its percentage changes.
    void Show(double fraction);
    /// Takes the bar away, so that messages start on a clean line. Shown again by the next Show.
    void Clear();

private:
    std::ostream& out_;
    bool isTerminal_;
    std::string label_;
    int shown_percent_ = -1;
};

/// Whether the error stream is a terminal.
bool ErrorStreamIsTerminal();

}  // namespace orvane
