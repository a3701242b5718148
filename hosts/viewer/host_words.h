// What the code below the viewer says, in the operator's language.
//
// It tells its lines in English. A line is known by its words, with its numbers or its names taken out; one that is not known
// stays as it is.
#pragma once

#include <QString>
#include <string>

namespace orvane {

QString Words(const std::string& line);

}  // namespace orvane
