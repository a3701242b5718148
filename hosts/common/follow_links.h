// Where a file is that a link may lead to.
#pragma once

#include <optional>
#include <string>

namespace orvane {

/// The place of `file`, in the system's own bytes, behind all links and in a folder that is told without any. A link whose file
/// is not there leads to where it would be. Nothing when links lead round in a circle, or the system does not tell.
std::optional<std::string> FollowLinks(const std::string& file);

}  // namespace orvane
