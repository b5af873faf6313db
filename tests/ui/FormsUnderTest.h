#pragma once

#include "DemoForm.h"

#include <memory>
#include <string>

/// The windows that the contract tests run against, with a user's hands and eyes. Each executable links one.
class FormsUnderTest {
public:
    virtual ~FormsUnderTest() = default;

    virtual ui::Toolkit& Toolkit() = 0;
    /// Shows the form and gives it the keyboard.
    virtual void Open(ui::Form& form) = 0;
    virtual void Press(ui::Form& form, const ui::Key& key) = 0;
    virtual void Type(ui::TextBox& box, std::string_view text) = 0;
    /// A click on a part: the node, row, line, tab or button in that place, the upper (0) or lower arrow.
    virtual void Click(ui::Control& control, int part = 0) = 0;
    virtual void DoubleClick(ui::Control& control, int part) = 0;
    virtual void CloseByTitleBar(ui::Form& form) = 0;
    /// Runs the form modally; the user does these in it one after the other, and what was posted runs in between.
    virtual void RunModal(ui::Form& form, std::vector<std::function<void()>> acts) = 0;
    /// Runs what was posted, outside every handler.
    virtual void RunPosted() = 0;
    /// Does this in the middle of the next yield.
    virtual void InNextYield(std::function<void()> act) = 0;
    /// What the control shows: its text, "on" or "off", "the selected part of how many", a tree's outline ("*" before
    /// the selected node, "-" behind an open one), or a letter for each button (_ disabled, x pressed, | between them).
    virtual std::string Shown(const ui::Control& control) = 0;

    static std::unique_ptr<FormsUnderTest> Make();
};
