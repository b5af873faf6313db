#pragma once

#include "ui/Button.h"
#include "ui/Form.h"

#include <gtest/gtest.h>

#include <set>

namespace tests {

/// What holds for every dialog: controls inside the window and beside each other, no mnemonic twice, a button for Enter
/// and one for Esc.
inline void CheckForm(ui::Form& form)
{
    form.Realize();
    const auto& controls = form.Controls();
    std::set<char> mnemonics;
    std::multiset<ui::Role> roles;
    for (std::size_t i = 0; i < controls.size(); ++i) {
        const ui::Control& control = *controls[i];
        if (!control.Visible())
            continue;
        const ui::Rect& a = control.Bounds();
        SCOPED_TRACE(std::to_string(i) + " " + control.Caption());
        EXPECT_GT(a.width, 0);
        EXPECT_GE(a.left, ui::LayoutMargin);
        EXPECT_LE(a.Right(), form.ClientSize().width - ui::LayoutMargin);
        EXPECT_LE(a.Bottom(), form.ClientSize().height - ui::LayoutMargin);
        EXPECT_GE(a.width, control.PreferredSize(a.width).width) << "clipped";
        for (std::size_t j = i + 1; j < controls.size(); ++j) {
            const ui::Rect& b = controls[j]->Bounds();
            if (control.TypeName() == "Frame" || controls[j]->TypeName() == "Frame")
                continue; // it holds others
            EXPECT_TRUE(a.Right() <= b.left || b.Right() <= a.left || a.Bottom() <= b.top || b.Bottom() <= a.top)
                << "overlaps " << j;
        }
        if (const auto mark = control.Caption().find('&'); mark != std::string::npos) {
            const auto letter =
                static_cast<char>(std::tolower(static_cast<unsigned char>(control.Caption().at(mark + 1))));
            EXPECT_TRUE(mnemonics.insert(letter).second) << letter << " is taken";
        }
        if (control.TypeName() == "CheckBox" || control.TypeName() == "CommandButton" ||
            (control.TypeName() == "Label" && i + 1 < controls.size() && controls[i + 1]->TypeName() == "TextBox" &&
             control.Caption().size() <= 40)) {
            EXPECT_TRUE(control.Caption().contains('&')) << "out of the keyboard's reach";
        }
        if (control.TypeName() == "TextBox") {
            EXPECT_TRUE(!control.ToolTipText.empty() || (i > 0 && controls[i - 1]->TypeName() == "Label"))
                << "a box without a name";
        }
        if (const auto* button = dynamic_cast<const ui::Button*>(&control))
            roles.insert(button->GetRole());
    }
    EXPECT_EQ(roles.count(ui::Role::Default), 1u);
    EXPECT_EQ(roles.count(ui::Role::Cancel), 1u);
}

} // namespace tests
