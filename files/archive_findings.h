// Gathering what is wrong with an archive, a few of each kind.
#pragma once

#include <string>
#include <utility>

#include "files/archive_check.h"

namespace orvane {

class ArcFindings {
public:
    explicit ArcFindings(ArcReport& report) : report_(report) {}

    /// `words` is called, for a text, only while findings of that kind are still told.
    template <class Words>
    void Add(ArcFault fault, ArcSeverity severity, Words words) {
        int told = 0;
        ArcFinding* last = nullptr;
        for (ArcFinding& finding : report_.findings) {
            if (finding.fault != fault) continue;
            ++told;
            last = &finding;
        }
        if (told >= kToldOfAKind) {
            ++last->more;
        } else {
            report_.findings.push_back({fault, severity, words(), 0});
        }
    }
    template <class Words>
    void Error(ArcFault fault, Words words) {
        Add(fault, ArcSeverity::Error, words);
    }
    template <class Words>
    void Warning(ArcFault fault, Words words) {
        Add(fault, ArcSeverity::Warning, words);
    }

private:
    static constexpr int kToldOfAKind = 5;

    ArcReport& report_;
};

}  // namespace orvane
