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

std::wstring ShortenedInTheMiddle(std::wstring text, const std::function<bool(const std::wstring&)>& fits)
{
    if (fits(text))
        return text;
    const auto keeping = [&](std::size_t units) {
        std::size_t head = (units + 1) / 2;
        std::size_t tail = text.size() - units / 2;
        if (head > 0 && IS_HIGH_SURROGATE(text[head - 1]))
            --head;
        if (tail < text.size() && IS_LOW_SURROGATE(text[tail]))
            ++tail;
        return text.substr(0, head) + L"..." + text.substr(tail);
    };
    std::size_t fitting = 0;
    for (std::size_t tooLong = text.size(); fitting + 1 < tooLong;) {
        const std::size_t middle = (fitting + tooLong) / 2;
        (fits(keeping(middle)) ? fitting : tooLong) = middle;
    }
    return keeping(fitting);
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
