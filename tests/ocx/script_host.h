// Runs scripts with the control as a global object and its events as functions "Map_EventName", which the system's own hosts do
// not offer everywhere.
#pragma once

#include <functional>
#include <string>

#include "tests/ocx/client.h"

namespace orvane::test {

struct ScriptRun {
    HRESULT result = E_FAIL;  ///< of the run itself
    HRESULT code = S_OK;      ///< of the first error
    std::wstring error;       ///< its line and its words, which are in the system's language; empty for a script without
};

/// Runs a script of an engine ("VBScript", "JScript") with `map` as the global "Map".
/// `during` is called once the script has run, with its functions connected to the events.
ScriptRun RunScript(const wchar_t* engine, const std::wstring& text, Client& map, const std::function<void()>& during = {});
/// The same, and a test failure when it does not come to its end.
void ExpectScript(const wchar_t* engine, const std::wstring& text, Client& map, const std::function<void()>& during = {});

}  // namespace orvane::test
