// Who makes the module's objects for COM.
#pragma once

#include "hosts/ocx/com_base.h"

namespace orvane {

/// The factory of the control's class or of its property page's.
HRESULT GetFactory(REFCLSID clsid, REFIID iid, void** out);

}  // namespace orvane
