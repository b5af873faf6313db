#pragma once

#include "ui/ItemControl.h"
#include "ui/win32/PeerBase.h"

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

    ItemControlPeer(ItemControl& peerControl, FormWindow& form, const Messages& nativeMessages)
        : PeerBase{peerControl, form}, control{peerControl}, messages{nativeMessages}
    {
    }

    void Sync(Aspect aspect) override;
    int NativeSelection() const { return static_cast<int>(Send(messages.selected)); }

private:
    ItemControl& control;
    Messages messages;
};

} // namespace ui::win32
