#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace ui::win32 {

/// Texts for native controls: UTF-16, cut at 64K units, which is more than any control shows.
std::wstring ToNative(std::string_view text);
std::string FromNative(std::wstring_view text);

/// The text, or its beginning and end with dots between, as long as `fits` says; the dots alone when nothing more does.
std::wstring ShortenedInTheMiddle(std::wstring text, const std::function<bool(const std::wstring&)>& fits);

/// The letter after the first single "&", in upper case; 0 when there is none.
wchar_t MnemonicOf(std::wstring_view caption);

} // namespace ui::win32
