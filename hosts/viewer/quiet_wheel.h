// A form that scrolls under the wheel must not be changed by it.
#pragma once

#include <QWidget>

namespace orvane {

/// Keeps the wheel from the number fields and lists of choices in `form` that do not have the keyboard; it goes to what lies
/// around them. To be called once, when the fields are in the form.
void KeepWheelFromFields(QWidget& form);

}  // namespace orvane
