// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Console.h"
#include "kstnedit/ProductRecord.h"

#include <memory>
#include <string>

namespace CLI {
class App;
}

namespace KestrinProductEditor::CommandLine {

/// Prints products as results, one after the other.
class IProductWriter
{
public:
    virtual ~IProductWriter() = default;
    virtual void Add(const ProductRecord& product) = 0;
    /// Ends the printing. Requires: called once, after the last product.
    virtual void End() = 0;
};

/// The option --format of the commands that print products.
class FormatOption
{
public:
    /// `app` keeps a reference to this object.
    void Declare(CLI::App& app);

    /// A writer for any number of products: a table with titles, CSV with titles, or a JSON array.
    [[nodiscard]] std::unique_ptr<IProductWriter> MakeListWriter(Console& console) const;
    /// A writer for one product: a line for each column, CSV with titles, or a JSON object.
    [[nodiscard]] std::unique_ptr<IProductWriter> MakeSingleWriter(Console& console) const;

private:
    std::string m_format = "table";
};

} // namespace KestrinProductEditor::CommandLine
