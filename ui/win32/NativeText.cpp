#include "ui/win32/NativeText.h"

#include "platform/Utf.h"
#include "ui/win32/WindowsHeader.h"

namespace ui::win32 {
namespace {

constexpr std::size_t LongestText = 0xFFFF;

} // namespace

std::wstring ToNative(std::string_view text)
{
    // A UTF-16 unit takes at most three bytes, so nothing that would be kept is lost before the conversion.
    std::wstring native = platform::utf::ToUtf16<wchar_t>(text.substr(0, LongestText * 3 + 3));
    if (native.size() > LongestText)
        native.resize(IS_HIGH_SURROGATE(native[LongestText - 1]) ? LongestText - 1 : LongestText);
    return native;
}

std::string FromNative(std::wstring_view text)
{
    return platform::utf::ToUtf8<wchar_t>(text);
}

wchar_t MnemonicOf(std::wstring_view caption)
{
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != L'&')
            continue;
        if (caption[i + 1] != L'&') {
            wchar_t letter = caption[i + 1];
            CharUpperBuffW(&letter, 1);
            return letter;
        }
        ++i;
    }
    return 0;
}

} // namespace ui::win32
