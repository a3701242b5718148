// What GDAL complains about, kept for the operator's message instead of going to the console.
#pragma once

#include <string>
#include <vector>

namespace orvane {

/// While it lives, errors and warnings of GDAL on this thread come here. Nests.
class GdalErrors {
public:
    GdalErrors();
    ~GdalErrors();
    GdalErrors(const GdalErrors&) = delete;
    GdalErrors& operator=(const GdalErrors&) = delete;

    /// The last failure in one line, or empty.
    const std::string& LastFailure() const { return lastFailure_; }
    /// Makes a failure that was got over one of the warnings.
    void DemoteFailure();
    /// The different warnings so far, in order, at most kMaxWarnings of them.
    const std::vector<std::string>& Warnings() const { return warnings_; }
    /// Whether there were other warnings than the kept ones.
    bool MoreWarnings() const { return moreWarnings_; }

    static constexpr std::size_t kMaxWarnings = 5;

private:
    struct Hook;
    void AddWarning(std::string line);

    std::string lastFailure_;
    std::vector<std::string> warnings_;
    bool moreWarnings_ = false;
};

}  // namespace orvane
