// The module that holds the control: its handle, its life, its type library.
#pragma once

#include <string>

#include "hosts/ocx/com_base.h"

namespace orvane {

HINSTANCE ModuleInstance();
/// The full path of the module's file; empty when the system does not tell it.
std::wstring ModulePath();
bool ModuleIsUnused();

/// The type library out of the module's own resource, registered or not.
HRESULT LoadOwnTypeLib(ITypeLib** out);
/// The description of one interface or class of it.
HRESULT LoadTypeInfo(REFGUID guid, ITypeInfo** out);

}  // namespace orvane
