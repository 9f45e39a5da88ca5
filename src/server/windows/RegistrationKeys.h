// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>
#include <vector>

namespace KestrinProductEditor {

/// What the registry holds of the component, told by its type library: the names and identifiers of the
/// library, of its creatable classes and of its interfaces. Keys are relative to a Classes key.
struct RegistrationKeys
{
    struct Value
    {
        std::wstring key;
        /// Empty: the default value of the key.
        std::wstring name;
        std::wstring text;
    };
    struct ProgramName
    {
        std::wstring key;
        std::wstring classID;
    };

    std::vector<Value> values;
    /// The keys that are the component's with all they hold: they bear its own identifiers.
    std::vector<std::wstring> trees;
    /// The keys that are the component's as long as they lead to its classes: another may take over a name.
    std::vector<ProgramName> names;
    /// The keys that may become empty when the others are gone, inner ones first.
    std::vector<std::wstring> parents;
};

/// Raises RegistrationError when the library does not answer.
[[nodiscard]] RegistrationKeys RegistrationKeysOf(ITypeLib& library, const std::wstring& modulePath);

} // namespace KestrinProductEditor
