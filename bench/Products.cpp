// SPDX-License-Identifier: MIT
#include "Products.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string_view>

namespace KestrinProductEditor::Bench {

namespace {

constexpr std::string_view kArticles[] = {
    "Adapter",      "Angle bracket", "Ball valve",    "Battery",   "Bearing",    "Blade",
    "Brass nipple", "Cable",         "Cable gland",   "Cable tie", "Castor",     "Chisel",
    "Clamp",        "Connector",     "Copper pipe",   "Drill bit", "Dowel",      "Elbow",
    "Extension",    "File",          "Filter",        "Fuse",      "Gasket",     "Gate valve",
    "Glove",        "Grease",        "Grinding disc", "Hammer",    "Handle",     "Hex bolt",
    "Hex nut",      "Hinge",         "Hook",          "Hose",      "Hose clamp", "Key ring",
    "Lamp",         "Lock",          "Machine screw", "Nail",      "O-ring",     "Paint brush",
    "Pipe",         "Plug",          "Pulley",        "Relay",     "Rivet",      "Roller",
    "Rope",         "Sander",        "Saw blade",     "Screw",     "Shelf",      "Socket",
    "Spring",       "Switch",        "Tape",          "Tee",       "Washer",     "Wood screw"};

// Letters beyond ASCII in UTF-8, as a European supplier's list has them.
constexpr std::string_view kForeignArticles[] = {"Schl\xC3\xBCsselsatz",
                                                 "D\xC3\xBC"
                                                 "bel",
                                                 "\xC3\x89querre",
                                                 "Cl\xC3\xA9 \xC3\xA0 pipe",
                                                 "R\xC3\xB8rtang",
                                                 "T\xC3\xB6m\xC3\xADt\xC5\x91"};

constexpr std::string_view kFinishes[] = {"",         " brass",  " zinc",       " steel",  " A2",
                                          " A4",      " nylon",  " black",      " white",  " heavy duty",
                                          " chromed", " copper", " galvanised", ", plain", ", blue"};

constexpr std::string_view kNotes[] = {
    "Delivered from stock within three working days; ",    "Sold by the box only, part boxes on request; ",
    "Replaces the former article with the same number, ",  "For indoor and outdoor use down to -20 degrees, ",
    "Spare parts are kept for ten years after delivery; ", "Not to be combined with older series, ",
    "Tested to the usual standard of the trade; ",         "Minimum order one full carton, "};

constexpr std::string_view kNoteEnds[] = {"ask for the data sheet",       "see the printed catalogue, page ",
                                          "price per hundred pieces",     "pallet of forty boxes on request",
                                          "colour may vary slightly",     "certificate costs extra, code ",
                                          "discontinued when stock ends", "box of "};

/// A short stream of numbers that depends on the index alone (the mixing steps of SplitMix64).
class Dice
{
public:
    explicit Dice(std::uint32_t index) : m_state((index + 1) * 0xD1342543DE82EF95U) {}

    std::uint32_t Below(std::uint32_t bound)
    {
        m_state += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = m_state;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
        mixed ^= mixed >> 31;
        return static_cast<std::uint32_t>(((mixed & 0xFFFFFFFFU) * bound) >> 32);
    }

    template<std::size_t kSize>
    std::string_view OneOf(const std::string_view (&texts)[kSize])
    {
        return texts[Below(static_cast<std::uint32_t>(kSize))];
    }

private:
    std::uint64_t m_state;
};

char FoldAscii(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

std::string FoldAscii(std::string_view text)
{
    std::string folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(),
                   [](char letter) { return FoldAscii(letter); });
    return folded;
}

std::string NameFrom(Dice& dice)
{
    std::string name(dice.Below(100) < 3 ? dice.OneOf(kForeignArticles) : dice.OneOf(kArticles));
    name += dice.OneOf(kFinishes);
    switch (dice.Below(4)) {
    case 0:
        name += " M" + std::to_string(2 + dice.Below(23)) + "x" + std::to_string(5 * (1 + dice.Below(60)));
        break;
    case 1:
        name += " " + std::to_string(1 + dice.Below(400)) + " mm";
        break;
    case 2:
        name += " no. " + std::to_string(10000 + dice.Below(90000));
        break;
    default:
        break;
    }
    name += " type " + std::to_string(dice.Below(10000));
    // Lists that several people keep shout here and there.
    if (dice.Below(12) == 0)
        std::transform(name.begin(), name.end(), name.begin(), [](char letter) {
            return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - ('a' - 'A')) : letter;
        });
    return name;
}

std::string PriceText(std::int64_t cents)
{
    std::string units = std::to_string(cents / 100);
    for (std::size_t at = units.size(); at > 3; at -= 3)
        units.insert(at - 3, 1, ',');
    const std::string fraction = std::to_string(100 + cents % 100);
    return "$" + units + "." + fraction.substr(1);
}

void AppendValue(std::string_view value, std::string& line)
{
    if (value.find(',') == std::string_view::npos)
        line += value;
    else
        line.append(1, '"').append(value).append(1, '"');
}

std::size_t CountOf(const std::vector<std::string>& sortedNames, const std::string& prefix)
{
    const auto isBefore = [&](const std::string& name, const std::string& text) {
        return name.compare(0, text.size(), text) < 0;
    };
    const auto isBehind = [&](const std::string& text, const std::string& name) {
        return name.compare(0, text.size(), text) > 0;
    };
    const auto first = std::lower_bound(sortedNames.begin(), sortedNames.end(), prefix, isBefore);
    const auto end = std::upper_bound(first, sortedNames.end(), prefix, isBehind);
    return static_cast<std::size_t>(std::distance(first, end));
}

} // namespace

ListedProduct ProductAt(std::uint32_t index)
{
    Dice dice(index);
    ListedProduct product;
    product.name = NameFrom(dice);
    product.partNum =
        std::to_string(100 + dice.Below(900)) + "-" + std::to_string(1000000 + index % 9000000U);
    // Many small prices, few large ones.
    product.cents = std::int64_t{5} + dice.Below(1U << (4 + dice.Below(15)));
    // One product in four has none.
    if (dice.Below(4) != 0) {
        product.note = dice.OneOf(kNotes);
        product.note += dice.OneOf(kNoteEnds);
        if (product.note.ends_with(' '))
            product.note += std::to_string(1 + dice.Below(500));
    }
    return product;
}

void WritePriceList(const std::filesystem::path& file, std::uint32_t count)
{
    std::ofstream output(file, std::ios::binary | std::ios::trunc);
    std::string line = "Name,PartNum,UnitPrice,Note\r\n";
    for (std::uint32_t index = 0; index < count; ++index) {
        const ListedProduct product = ProductAt(index);
        AppendValue(product.name, line);
        line += ',';
        AppendValue(product.partNum, line);
        line += ',';
        AppendValue(PriceText(product.cents), line);
        line += ',';
        AppendValue(product.note, line);
        line += "\r\n";
        output << line;
        line.clear();
    }
    output << line;
    output.close();
    if (!output)
        throw std::runtime_error("cannot write " + file.string());
}

std::uint64_t PayloadBytes(std::uint32_t count)
{
    std::uint64_t bytes = 0;
    for (std::uint32_t index = 0; index < count; ++index) {
        const ListedProduct product = ProductAt(index);
        bytes += kNumberBytesOfRow + product.name.size() + product.partNum.size() + product.note.size();
    }
    return bytes;
}

std::vector<Prefix> SharedPrefixes(std::uint32_t count, std::size_t names, std::size_t wanted)
{
    std::vector<std::string> sorted;
    sorted.reserve(count);
    for (std::uint32_t index = 0; index < count; ++index)
        sorted.push_back(FoldAscii(ProductAt(index).name));
    std::sort(sorted.begin(), sorted.end());

    constexpr std::size_t kTries = 2000;
    const auto distance = [&](const Prefix& prefix) {
        return std::abs(std::log(static_cast<double>(prefix.names) / static_cast<double>(names)));
    };
    std::vector<Prefix> found;
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same prefixes in every run
    for (std::size_t tried = 0; tried < kTries; ++tried) {
        const std::string& name = sorted[random() % sorted.size()];
        Prefix best;
        for (std::size_t length = 1; length <= name.size(); ++length) {
            const auto letter = static_cast<unsigned char>(name[length - 1]);
            if (letter >= 0x80 || letter == '\'')
                break;
            Prefix prefix{name.substr(0, length), 0};
            prefix.names = CountOf(sorted, prefix.text);
            if (best.names == 0 || distance(prefix) < distance(best))
                best = std::move(prefix);
        }
        const bool isKnown = std::any_of(found.begin(), found.end(),
                                         [&](const Prefix& other) { return other.text == best.text; });
        if (best.names != 0 && !isKnown)
            found.push_back(std::move(best));
    }
    std::sort(found.begin(), found.end(),
              [&](const Prefix& left, const Prefix& right) { return distance(left) < distance(right); });
    found.resize(std::min(found.size(), wanted));
    return found;
}

} // namespace KestrinProductEditor::Bench
