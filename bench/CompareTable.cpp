// SPDX-License-Identifier: MIT
#include "CompareTable.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <string_view>

namespace KestrinProductEditor::Bench {

namespace {

/// A bound of a ratio, and how it is printed.
struct Bound
{
    double limit = 0;
    std::string_view text;
};

/// One work: the measurements that stand against each other, and the bounds of their ratio at a million
/// products.
struct Work
{
    std::string_view title;
    std::string_view measured;
    std::string_view yardstick;
    std::string_view against;
    Bound must;
    Bound aim;
};

constexpr Bound kNoBound = {0, "-"};

constexpr Work kWorks[] = {
    {"open", "open.ours", "open.sqlite", "SQLite backup", {2, "2"}, {1, "1"}},
    {"open", "open.ours", "read", "bytes read", {8, "8"}, {5, "5"}},
    {"open and first find", "open-and-find.ours", "open-and-find.sqlite", "SQLite", kNoBound, kNoBound},
    {"save over the old file", "save.ours", "save.sqlite", "SQLite backup", {2, "2"}, {1, "1"}},
    {"save as a new file", "save-new.ours", "save-new.sqlite", "SQLite backup", {2, "2"}, {1, "1"}},
    {"CSV import", "import.ours", "import.sqlite", "SQLite", {0.5, "1/2"}, {0.25, "1/4"}},
    {"CSV import, progress",
     "import-progress.ours",
     "import.ours",
     "no progress",
     {1.5, "1.5"},
     {1.2, "1.2"}},
    {"CSV export", "export.ours", "export.sqlite", "SQLite", {0.5, "1/2"}, {0.25, "1/4"}},
    {"find by RowID", "find-rowid.ours", "find-rowid.sqlite", "SQLite", {0.5, "1/2"}, {0.25, "1/4"}},
    {"find by UniqueID", "find-uniqueid.ours", "find-uniqueid.sqlite", "SQLite", {0.5, "1/2"}, {0.25, "1/4"}},
    {"match list, some 50", "match-50.ours", "match-50.sqlite", "SQLite", {1, "1"}, {0.25, "1/4"}},
    {"match list, some 1000", "match-1000.ours", "match-1000.sqlite", "SQLite", {1, "1"}, {0.25, "1/4"}},
    {"50 rows anywhere", "page.ours", "page.sqlite", "SQLite", {1.0 / 200, "1/200"}, {1.0 / 1000, "1/1000"}},
    {"add a row", "add.ours", "add.sqlite", "SQLite", {1, "1"}, {0.5, "1/2"}},
    {"rename a row", "rename.ours", "rename.sqlite", "SQLite", {1, "1"}, {0.5, "1/2"}},
    {"delete a row", "delete.ours", "delete.sqlite", "SQLite", {1, "1"}, {0.5, "1/2"}},
};

constexpr double kMustBytesOfRow = 64;
constexpr double kAimBytesOfRow = 48;

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double Least(const std::vector<double>& values)
{
    return *std::min_element(values.begin(), values.end());
}

std::string Format(const char* format, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string TimeText(double microseconds)
{
    if (microseconds >= 1000)
        return Format("%.1f ms", microseconds / 1000);
    return Format("%.2f us", microseconds);
}

std::string RatioText(double ratio)
{
    if (ratio >= 0.095)
        return Format("%.2f", ratio);
    return Format("1/%.0f", 1 / ratio);
}

std::string_view Verdict(double value, const Bound& bound)
{
    if (bound.limit <= 0)
        return "-";
    return value <= bound.limit ? "PASS" : "miss";
}

struct Line
{
    std::string work;
    std::string products;
    std::string ours;
    std::string oursLeast;
    std::string against;
    std::string theirs;
    std::string theirsLeast;
    std::string ratio;
    std::string ratioLeast;
    std::string_view must;
    std::string_view mustVerdict;
    std::string_view aim;
    std::string_view aimVerdict;
};

void PrintLine(std::ostream& output, const Line& line)
{
    char text[256];
    std::snprintf(text, sizeof text, "%-31s %8s %11s %11s  %-13s %11s %11s %7s %7s  %6s %-4s  %6s %-4s",
                  line.work.c_str(), line.products.c_str(), line.ours.c_str(), line.oursLeast.c_str(),
                  line.against.c_str(), line.theirs.c_str(), line.theirsLeast.c_str(), line.ratio.c_str(),
                  line.ratioLeast.c_str(), std::string(line.must).c_str(),
                  std::string(line.mustVerdict).c_str(), std::string(line.aim).c_str(),
                  std::string(line.aimVerdict).c_str());
    output << text << '\n';
}

const std::vector<double>& Of(const std::map<std::string, std::vector<double>>& samples,
                              std::string_view name)
{
    const auto found = samples.find(std::string(name));
    if (found == samples.end())
        throw std::runtime_error("nothing measured " + std::string(name));
    return found->second;
}

bool IsOurs(std::string_view name)
{
    return name.ends_with(".ours");
}

} // namespace

void CompareTable::Take(std::uint32_t count, const Measurements& results)
{
    if (std::find(m_counts.begin(), m_counts.end(), count) == m_counts.end())
        m_counts.push_back(count);
    Samples& samples = m_samples[count];
    for (const auto& [name, value] : results) {
        samples[name].push_back(value);
        constexpr std::string_view kCheck = "check.";
        if (!name.starts_with(kCheck))
            continue;
        const std::string answer = name.substr(0, name.rfind('.'));
        const auto firstAnswer = samples.try_emplace(answer, std::vector<double>{value}).first;
        if (firstAnswer->second.front() != value)
            throw std::runtime_error("the two sides do not agree on " + answer + ": " +
                                     Format("%.0f", firstAnswer->second.front()) + " and " +
                                     Format("%.0f", value));
    }
}

void CompareTable::Print(std::ostream& output) const
{
    PrintLine(output, {"work", "products", "ours", "least", "against", "theirs", "least", "ratio", "least",
                       "must", "", "aim", ""});
    for (const std::uint32_t count : m_counts) {
        const Samples& samples = m_samples.at(count);
        PrvPrintWorks(output, count, samples);
        PrvPrintMemory(output, count, samples);
    }
    PrvPrintGrowth(output);
    for (const std::uint32_t count : m_counts) {
        const Samples& samples = m_samples.at(count);
        constexpr double kMegabyte = 1e6;
        output << Format("%.0f products: ", count)
               << Format("list %.1f MB, ", Of(samples, "list-bytes").front() / kMegabyte)
               << Format("catalogue %.1f MB, ", Of(samples, "catalogue-bytes").front() / kMegabyte)
               << Format("payload %.1f MB; ", Of(samples, "payload").front() / kMegabyte)
               << Format("match lists of %.0f ", Of(samples, "prefix-50").front())
               << Format("and %.0f products on average", Of(samples, "prefix-1000").front()) << '\n';
    }
}

void CompareTable::PrvPrintWorks(std::ostream& output, std::uint32_t count, const Samples& samples) const
{
    for (const Work& work : kWorks) {
        const std::vector<double>& ours = Of(samples, work.measured);
        const std::vector<double>& theirs = Of(samples, work.yardstick);
        const double ratio = Median(ours) / Median(theirs);
        PrintLine(output,
                  {std::string(work.title), std::to_string(count), TimeText(Median(ours)),
                   TimeText(Least(ours)), std::string(work.against), TimeText(Median(theirs)),
                   TimeText(Least(theirs)), RatioText(ratio), RatioText(Least(ours) / Least(theirs)),
                   work.must.text, Verdict(ratio, work.must), work.aim.text, Verdict(ratio, work.aim)});
    }
}

void CompareTable::PrvPrintMemory(std::ostream& output, std::uint32_t count, const Samples& samples) const
{
    const double payload = Of(samples, "payload").front();
    const auto ofRow = [&](double resident) { return (resident - payload) / count; };
    const std::vector<double>& ours = Of(samples, "memory.ours");
    const std::vector<double>& theirs = Of(samples, "memory.sqlite");
    const double median = ofRow(Median(ours));
    constexpr const char* kBytes = "%.1f B";
    PrintLine(output, {"memory over payload, a row", std::to_string(count), Format(kBytes, median),
                       Format(kBytes, ofRow(Least(ours))), "SQLite", Format(kBytes, ofRow(Median(theirs))),
                       Format(kBytes, ofRow(Least(theirs))), RatioText(Median(ours) / Median(theirs)),
                       RatioText(Least(ours) / Least(theirs)), "64 B", Verdict(median, {kMustBytesOfRow, {}}),
                       "48 B", Verdict(median, {kAimBytesOfRow, {}})});
}

void CompareTable::PrvPrintGrowth(std::ostream& output) const
{
    if (m_counts.size() < 2)
        return;
    const std::uint32_t fewer = m_counts[m_counts.size() - 2];
    const std::uint32_t more = m_counts.back();
    const Samples& before = m_samples.at(fewer);
    const Samples& after = m_samples.at(more);
    const double readGrowth = Median(Of(after, "read")) / Median(Of(before, "read"));
    const double leastReadGrowth = Least(Of(after, "read")) / Least(Of(before, "read"));
    const double sortGrowth = more * std::log2(more) / (fewer * std::log2(fewer));
    const double yardstick = std::max(readGrowth, sortGrowth);
    constexpr const char* kTimes = "x %.1f";
    std::vector<std::string_view> done;
    for (const Work& work : kWorks) {
        if (!IsOurs(work.measured) || std::find(done.begin(), done.end(), work.measured) != done.end())
            continue;
        done.push_back(work.measured);
        const double growth = Median(Of(after, work.measured)) / Median(Of(before, work.measured));
        const double leastGrowth = Least(Of(after, work.measured)) / Least(Of(before, work.measured));
        PrintLine(output, {"growth: " + std::string(work.title), std::to_string(more), Format(kTimes, growth),
                           Format(kTimes, leastGrowth), readGrowth >= sortGrowth ? "bytes read" : "n log n",
                           Format(kTimes, yardstick), Format(kTimes, std::max(leastReadGrowth, sortGrowth)),
                           RatioText(growth / yardstick),
                           RatioText(leastGrowth / std::max(leastReadGrowth, sortGrowth)), "2",
                           Verdict(growth / yardstick, {2, {}}), "-", "-"});
    }
}

} // namespace KestrinProductEditor::Bench
