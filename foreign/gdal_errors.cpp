#include "foreign/gdal_errors.h"

#include <cpl_error.h>

#include <algorithm>
#include <utility>

namespace orvane {

struct GdalErrors::Hook {
    static void CPL_STDCALL Handle(CPLErr level, CPLErrorNum, const char* text) {
        auto* self = static_cast<GdalErrors*>(CPLGetErrorHandlerUserData());
        if (self == nullptr || level < CE_Warning) return;
        std::string line = text == nullptr ? "" : text;
        std::replace_if(
            line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
        if (level == CE_Warning) {
            self->AddWarning(std::move(line));
        } else {
            self->lastFailure_ = std::move(line);
        }
    }
};

GdalErrors::GdalErrors() { CPLPushErrorHandlerEx(Hook::Handle, this); }

GdalErrors::~GdalErrors() { CPLPopErrorHandler(); }

void GdalErrors::DemoteFailure() {
    if (!lastFailure_.empty()) AddWarning(std::exchange(lastFailure_, {}));
}

void GdalErrors::AddWarning(std::string line) {
    if (std::find(warnings_.begin(), warnings_.end(), line) != warnings_.end()) return;
    if (warnings_.size() == kMaxWarnings) {
        moreWarnings_ = true;
        return;
    }
    warnings_.push_back(std::move(line));
}

}  // namespace orvane
