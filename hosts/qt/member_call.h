// A member of the control called with Qt values.
#pragma once

#include <QString>
#include <QVariant>
#include <QVariantList>

#include "control/automation/invoke.h"

namespace orvane {

/// Calls a property or method of that name, without regard to ASCII case, with its inputs in order; a property called with one
/// value is written. The answer is the result; a member with outputs answers a list of the result, if it has one, and the outputs
/// in order. An invalid value where there is nothing to answer, and for a call that is not as declared: `error` then says why,
/// and is empty otherwise.
QVariant CallMember(COrvane4Ctrl& ctrl, const QString& name, const QVariantList& inputs, QString& error);

}  // namespace orvane
