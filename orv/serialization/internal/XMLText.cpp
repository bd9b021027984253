#include "orv/serialization/internal/XMLText.h"

#include <array>
#include <cstddef>

namespace Zan::Orv::Core::Service::Internal
{

namespace
{

constexpr char32_t replacement = 0xFFFD;

char const* Escape(char c)
{
    switch (c) {
    case '"': return "&quot;";
    case '&': return "&amp;";
    case '\'': return "&apos;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    default: return nullptr;
    }
}

// A table finds the next of the five in one look at each byte.
constexpr std::array<bool, 256> MakeMarkup()
{
    std::array<bool, 256> markup{};
    for (char const c : {'"', '&', '\'', '<', '>'})
        markup[static_cast<unsigned char>(c)] = true;
    return markup;
}

std::size_t FindMarkup(std::string_view text, std::size_t from)
{
    static constexpr std::array<bool, 256> markup = MakeMarkup();
    while (from < text.size() && !markup[static_cast<unsigned char>(text[from])])
        ++from;
    return from;
}

// The code point at `at`, which moves behind it. The rules are those of RFC 3629: no overlong forms, no
// surrogates, nothing above U+10FFFF.
char32_t DecodeUTF8(std::string_view text, std::size_t& at)
{
    auto const lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80)
        return lead;

    std::size_t const following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4 || text.size() - at < following)
        return replacement;

    char32_t code = lead & (0x3Fu >> following);
    for (std::size_t i = 0; i < following; ++i) {
        auto const next = static_cast<unsigned char>(text[at + i]);
        if ((next & 0xC0u) != 0x80u)
            return replacement;
        code = (code << 6) | (next & 0x3Fu);
    }
    bool const overlong = (following == 2 && code < 0x800) || (following == 3 && code < 0x10000);
    bool const surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (overlong || surrogate || code > 0x10FFFF)
        return replacement;
    at += following;
    return code;
}

// The code point at `at`, which moves behind it.
char32_t DecodeUTF16(std::u16string_view wide, std::size_t& at)
{
    char32_t const unit = wide[at++];
    if (unit < 0xD800 || unit > 0xDFFF)
        return unit;
    bool const paired = unit < 0xDC00 && at < wide.size() && wide[at] >= 0xDC00 && wide[at] <= 0xDFFF;
    if (!paired)
        return replacement;
    return 0x10000 + ((unit - 0xD800) << 10) + (wide[at++] - 0xDC00u);
}

void AppendUTF8(std::string& text, char32_t code)
{
    auto const put = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (code < 0x80)
        return put(code);
    if (code < 0x800)
        put(0xC0 | (code >> 6));
    else {
        if (code < 0x10000)
            put(0xE0 | (code >> 12));
        else {
            put(0xF0 | (code >> 18));
            put(0x80 | ((code >> 12) & 0x3F));
        }
        put(0x80 | ((code >> 6) & 0x3F));
    }
    put(0x80 | (code & 0x3F));
}

} // namespace

void AppendEscaped(std::string& text, std::string_view value)
{
    std::size_t copied = 0;
    for (std::size_t found = FindMarkup(value, 0); found != value.size(); found = FindMarkup(value, copied)) {
        text.append(value, copied, found - copied);
        text += Escape(value[found]);
        copied = found + 1;
    }
    text.append(value, copied, value.size() - copied);
}

void AssignUTF16(std::u16string& wide, std::string_view text)
{
    wide.clear();
    for (std::size_t at = 0; at < text.size();) {
        char32_t const code = DecodeUTF8(text, at);
        if (code < 0x10000)
            wide += static_cast<char16_t>(code);
        else {
            wide += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
            wide += static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
        }
    }
}

void AssignUTF8(std::string& text, std::u16string_view wide)
{
    // Nearly all text in documents is ASCII, which is copied unit by unit.
    text.resize(wide.size());
    std::size_t at = 0;
    while (at < wide.size() && wide[at] < 0x80) {
        text[at] = static_cast<char>(wide[at]);
        ++at;
    }
    text.resize(at);
    while (at < wide.size())
        AppendUTF8(text, DecodeUTF16(wide, at));
}

} // namespace Zan::Orv::Core::Service::Internal
