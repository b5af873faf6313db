#pragma once

#include "ui/ComboBox.h"
#include "ui/ListBox.h"
#include "ui/win32/PeerBase.h"

#include <string>

namespace ui::win32 {

/// Keeps the lines and the selection of a native list or drop-down list like the model's.
class ItemControlPeer : public PeerBase {
protected:
    /// What the two kinds of native lists call the same things.
    struct Messages {
        UINT clear;
        UINT add;
        UINT select;
        UINT selected;
    };

    ItemControlPeer(ItemControl& peerItems, FormWindow& form, const Messages& nativeMessages);

    void Sync(Aspect aspect) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    int NativeSelection() const { return static_cast<int>(Send(messages.selected)); }
    /// Pixels that a line's text has; 0 while that is not known.
    virtual int Room() const;
    /// The line under a point of the control; -1 when there is none.
    virtual int LineAt(POINT point) const = 0;

private:
    ItemControl& items;
    Messages messages;
    std::string shownToolTip;

    /// A long text shortened in the middle: names often differ, and are marked, at their ends.
    std::wstring Fitted(const std::string& item) const;
    void ShowToolTip(int line);
};

class ListBoxPeer final : public ItemControlPeer {
public:
    ListBoxPeer(ListBox& peerList, FormWindow& form, int id);
    void Update(Aspect aspect) override;
    Size Preferred(int width) const override;
    void DpiChanged() override;
    void OnCommand(int code, int id) override;

protected:
    int LineAt(POINT point) const override;

private:
    ListBox& list;
};

class ComboBoxPeer final : public ItemControlPeer {
public:
    ComboBoxPeer(ComboBox& peerCombo, FormWindow& form, int id);
    void Update(Aspect aspect) override;
    Size Preferred(int width) const override;
    void DpiChanged() override;
    void OnCommand(int code, int id) override;
    bool HasOpenList() const override { return Send(CB_GETDROPPEDSTATE) != 0; }

protected:
    int Room() const override;
    int LineAt(POINT) const override { return combo.Selected(); }

private:
    ComboBox& combo;
    bool cancelled{}; ///< the open list is being closed without a choice
};

} // namespace ui::win32
