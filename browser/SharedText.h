#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace browser {

/// A text that many rows have alike, held once: a list of ten thousand templates says the same of the folder of each.
class SharedText {
public:
    SharedText() = default;
    SharedText(std::string text) : held{std::make_shared<const std::string>(std::move(text))} {}

    operator std::string_view() const { return held ? std::string_view{*held} : std::string_view{}; }
    bool empty() const { return std::string_view{*this}.empty(); }

private:
    std::shared_ptr<const std::string> held;
};

} // namespace browser
