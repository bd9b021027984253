#include "orv/serialization/internal/XMLText.h"

#include <array>
#include <cstddef>

namespace Zan::Orv::Core::Service::Internal {

namespace {

constexpr char32_t replacement = 0xFFFD;

char const* Escape(char c)
{
    switch (c)
    {
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

void AppendCode(std::string& text, char32_t code)
{
    auto const put = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (code < 0x80)
        return put(code);
    if (code < 0x800)
        put(0xC0 | (code >> 6));
    else
    {
        if (code < 0x10000)
            put(0xE0 | (code >> 12));
        else
        {
            put(0xF0 | (code >> 18));
            put(0x80 | ((code >> 12) & 0x3F));
        }
        put(0x80 | ((code >> 6) & 0x3F));
    }
    put(0x80 | (code & 0x3F));
}

} // namespace

bool HasMarkup(std::string_view value)
{
    return FindMarkup(value, 0) != value.size();
}

void AppendEscaped(std::string& text, std::string_view value)
{
    std::size_t copied = 0;
    for (std::size_t found = FindMarkup(value, 0); found != value.size(); found = FindMarkup(value, copied))
    {
        text.append(value, copied, found - copied);
        text += Escape(value[found]);
        copied = found + 1;
    }
    text.append(value, copied, value.size() - copied);
}

void AppendUTF8(std::string& text, std::u16string_view wide)
{
    // Nearly all text in documents is ASCII, which is copied unit by unit.
    std::size_t const before = text.size();
    text.resize(before + wide.size());
    std::size_t at = 0;
    for (; at < wide.size() && wide[at] < 0x80; ++at)
        text[before + at] = static_cast<char>(wide[at]);
    text.resize(before + at);
    while (at < wide.size())
        AppendCode(text, DecodeUTF16(wide, at));
}

void AssignUTF8(std::string& text, std::u16string_view wide)
{
    text.clear();
    AppendUTF8(text, wide);
}

} // namespace Zan::Orv::Core::Service::Internal
