#pragma once

#include "tests/support/Bytes.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tests {

/// Makes the smallest executables that carry a version resource.
struct PackBuilder {
    struct Language {
        std::uint16_t language{0x0409}, codePage{0x04B0};
        std::string productVersion;
        bool hasTable{true};
    };
    std::vector<Language> languages;
    bool hasTranslation{true};
    bool is64Bit{};

    static std::string Wide(std::string_view text)
    {
        std::string bytes;
        for (const char c : text)
            (bytes += c) += '\0';
        return bytes.append(2, '\0');
    }
    static void Align(std::string& bytes) { bytes.append((4 - bytes.size() % 4) % 4, '\0'); }

    static std::string Node(std::string_view key, const std::string& value, std::uint16_t valueLength, bool isText,
                            const std::vector<std::string>& children)
    {
        std::string node = Number(0, 2) + Number(valueLength, 2) + Number(isText ? 1 : 0, 2) + Wide(key);
        Align(node);
        node += value;
        for (const std::string& child : children) {
            Align(node);
            node += child;
        }
        return node.replace(0, 2, Number(node.size(), 2));
    }
    static std::string Text(std::string_view key, std::string_view text)
    {
        return Node(key, Wide(text), static_cast<std::uint16_t>(text.size() + 1), true, {});
    }
    static std::string Hex(std::uint16_t number)
    {
        std::string digits;
        for (int shift = 12; shift >= 0; shift -= 4)
            digits += "0123456789abcdef"[number >> shift & 0xF];
        return digits;
    }

    std::string Block() const
    {
        std::vector<std::string> tables;
        std::string translation;
        for (const Language& one : languages) {
            translation += Number(one.language, 2) + Number(one.codePage, 2);
            if (one.hasTable)
                tables.push_back(Node(Hex(one.language) + Hex(one.codePage), {}, 0, true,
                                      {Text("CompanyName", "Somebody"), Text("ProductVersion", one.productVersion)}));
        }
        std::vector<std::string> children{Node("StringFileInfo", {}, 0, true, tables)};
        if (hasTranslation)
            children.push_back(
                Node("VarFileInfo", {}, 0, true,
                     {Node("Translation", translation, static_cast<std::uint16_t>(translation.size()), false, {})}));
        return Node("VS_VERSION_INFO", std::string(52, '\1'), 52, false, children);
    }

    /// The whole file. The resources are its last bytes, the block the last of them.
    std::string Bytes() const
    {
        const std::string block = Block();
        constexpr std::uint32_t address = 0x1000;
        const std::size_t optionalSize = (is64Bit ? 112 : 96) + 3 * 8;
        const std::size_t resourcesAt = 64 + 24 + optionalSize + 40;
        constexpr std::uint32_t below = 0x80000000;
        const auto directory = [](std::uint32_t number, std::uint32_t target) {
            return std::string(12, '\0') + Number(0, 2) + Number(1, 2) + Number(number, 4) + Number(target, 4);
        };
        std::string resources = directory(16, below | 24) + directory(1, below | 48) + directory(0x409, 72);
        resources += Number(address + 88, 4) + Number(block.size(), 4) + Number(0, 8) + block;

        std::string file = "MZ" + std::string(58, '\0') + Number(64, 4);
        file += std::string{"PE\0\0", 4} + Number(0x14C, 2) + Number(1, 2) + Number(0, 12) + Number(optionalSize, 2) +
                Number(0x102, 2);
        std::string optional = Number(is64Bit ? 0x20B : 0x10B, 2);
        optional.resize(optionalSize - 3 * 8 - 4);
        optional += Number(3, 4) + Number(0, 16) + Number(address, 4) + Number(resources.size(), 4);
        file += optional + ".rsrc" + std::string(3, '\0') + Number(resources.size(), 4) + Number(address, 4) +
                Number(resources.size(), 4) + Number(resourcesAt, 4) + Number(0, 16);
        return file + resources;
    }

    static std::string Pack(std::string_view version)
    {
        return PackBuilder{.languages = {{.productVersion = std::string{version}}}}.Bytes();
    }
};

} // namespace tests
