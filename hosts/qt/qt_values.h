// Qt values to automation values and back.
#pragma once

#include <QString>
#include <QVariant>
#include <string_view>

#include "control/automation/call.h"
#include "platform/variant.h"

namespace orvane {

/// Any Qt value to the automation value closest to it: truths, whole numbers, numbers, texts (QByteArray passes as bytes in code
/// page 932), lists of those. A list of one number type becomes an array of it, any other list an array of variants. False, with
/// `out` left alone, for a value that has none, and for a text with a character that is not in the code page.
bool ToVariant(const QVariant& value, Variant& out);
/// A value or an array, which becomes a list; the empty value is an invalid one. Bytes that do not decode show as U+FFFD.
QVariant ToQt(const Variant& value);

/// Fills the argument for a member's input; false when the value cannot be passed there. Colours and handles take all
/// 32 bits with or without a sign.
bool SetInput(const Arg& arg, const QVariant& value, Argument& out);
/// What an output holds after a call; invalid when it was left untouched.
QVariant GetOutput(const Arg& arg, const Argument& out);
/// The result of a member: a colour has no sign.
QVariant ToQtResult(const ValueType& type, const Variant& value);

QString ToQString(std::string_view bytes);

}  // namespace orvane
