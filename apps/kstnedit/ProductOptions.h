// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Console.h"

#include <KestrinProductEditor/Variant.h>

#include <string>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace KestrinProductEditor::CommandLine {

/// The options of the commands that write a product: --name, --key, --part-num, --price, --note.
class ProductOptions
{
public:
    enum class Name
    {
        Required,
        Optional
    };

    /// `app` keeps references to this object.
    void Declare(CLI::App& app, Name name);

    [[nodiscard]] bool AreEmpty() const;

    /// The packed product with the given values in place of its own, checked as a whole. Throws
    /// CommandFailure for a value that is refused, and says which.
    [[nodiscard]] Variant Apply(Variant packed, Console& console) const;

private:
    struct Entry
    {
        std::string value;
        CLI::Option* option = nullptr;

        [[nodiscard]] bool IsGiven() const;
    };

    Entry m_name;
    Entry m_key;
    Entry m_partNum;
    Entry m_price;
    Entry m_note;
};

} // namespace KestrinProductEditor::CommandLine
