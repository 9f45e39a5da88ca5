// SPDX-License-Identifier: MIT
#include "support/RowsetXml.h"

#include "platform/Text.h"

#include <stdexcept>

namespace KestrinProductEditor::Testing {

namespace {

struct Tag
{
    std::string name;
    std::map<std::string, std::string> attributes;
    bool isClosing = false;
};

std::string Unescape(std::string_view text)
{
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '&') {
            plain += text[i];
            continue;
        }
        const std::size_t end = text.find(';', i);
        const std::string entity(text.substr(i + 1, end - i - 1));
        if (entity.rfind("#x", 0) == 0)
            AppendCodePoint(static_cast<char32_t>(std::stoul(entity.substr(2), nullptr, 16)), plain);
        else
            throw std::runtime_error("unknown entity " + entity);
        i = end;
    }
    return plain;
}

/// The next tag at or behind `at`, which moves behind it. False at the end.
bool NextTag(std::string_view text, std::size_t& at, Tag& tag)
{
    constexpr std::string_view kBlanks = " \t\r\n";
    tag = {};
    at = text.find('<', at);
    if (at == std::string_view::npos)
        return false;
    ++at;
    if (text.at(at) == '/') {
        tag.isClosing = true;
        ++at;
    }
    const std::size_t nameEnd = text.find_first_of(" \t\r\n/>", at);
    tag.name = text.substr(at, nameEnd - at);
    at = nameEnd;
    for (;;) {
        at = text.find_first_not_of(kBlanks, at);
        if (text.at(at) == '/' || text.at(at) == '>')
            break;
        const std::size_t equals = text.find('=', at);
        const char quote = text.at(equals + 1);
        const std::size_t end = text.find(quote, equals + 2);
        tag.attributes[std::string(text.substr(at, equals - at))] =
            Unescape(text.substr(equals + 2, end - equals - 2));
        at = end + 1;
    }
    at = text.find('>', at) + 1;
    return true;
}

void Overlay(const Tag& tag, XmlRow& row)
{
    for (const auto& [name, value] : tag.attributes) {
        if (name != "rs:forcenull") {
            row.values[name] = value;
            continue;
        }
        for (std::size_t at = 0; at < value.size();) {
            const std::size_t end = std::min(value.find(' ', at), value.size());
            row.values.erase(value.substr(at, end - at));
            at = end + 1;
        }
    }
}

} // namespace

XmlTable ReadRowsetXml(std::string_view text)
{
    XmlTable table;
    Tag tag;
    std::string group;
    XmlRow changed;
    for (std::size_t at = 0; NextTag(text, at, tag);) {
        if (tag.name == "s:AttributeType" && !tag.isClosing) {
            table.columns.push_back(tag.attributes.at("name"));
        } else if (tag.name == "rs:original") {
            group = tag.isClosing ? "rs:update" : tag.name;
        } else if (tag.name == "rs:update" || tag.name == "rs:insert" || tag.name == "rs:delete") {
            group = tag.isClosing ? "" : tag.name;
        } else if (tag.name == "z:row") {
            XmlRow row;
            if (group == "rs:update")
                row = changed;
            Overlay(tag, row);
            if (group == "rs:original") {
                changed = row;
                continue;
            }
            row.state = group == "rs:update"   ? PlainState::Changed
                        : group == "rs:insert" ? PlainState::Inserted
                        : group == "rs:delete" ? PlainState::Deleted
                                               : PlainState::Original;
            table.rows.push_back(row);
        }
    }
    if (table.columns.empty())
        throw std::runtime_error("no columns");
    return table;
}

} // namespace KestrinProductEditor::Testing
