// The control's entries in the registry.
#pragma once

#include "hosts/ocx/com_base.h"

namespace orvane {

/// Writes the classes, the programmatic ids, the category of controls and the type library, for this user alone or for the
/// machine. No category says that the control is safe for scripts of unknown origin: its members read and write files.
HRESULT RegisterControl(bool forUser);
/// Takes them out again; what is not there is no error.
HRESULT UnregisterControl(bool forUser);

}  // namespace orvane
