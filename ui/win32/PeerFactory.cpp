#include "ui/win32/PeerFactory.h"

#include "ui/win32/ButtonPeer.h"
#include "ui/win32/CheckBoxPeer.h"
#include "ui/win32/ComboBoxPeer.h"
#include "ui/win32/FramePeer.h"
#include "ui/win32/ImagePeer.h"
#include "ui/win32/LabelPeer.h"
#include "ui/win32/ListBoxPeer.h"
#include "ui/win32/ListViewPeer.h"
#include "ui/win32/ProgressBarPeer.h"
#include "ui/win32/SplitterPeer.h"
#include "ui/win32/StatusBarPeer.h"
#include "ui/win32/TabStripPeer.h"
#include "ui/win32/TextBoxPeer.h"
#include "ui/win32/ToolBarPeer.h"
#include "ui/win32/TreeViewPeer.h"
#include "ui/win32/UpDownPeer.h"

#include <stdexcept>

namespace ui::win32 {
namespace {

template <class Kind, class Peer>
std::unique_ptr<PeerBase> TryCreate(Control& control, FormWindow& window, int id)
{
    auto* model = dynamic_cast<Kind*>(&control);
    return model != nullptr ? std::make_unique<Peer>(*model, window, id) : nullptr;
}

} // namespace

std::unique_ptr<PeerBase> CreateControlPeer(Control& control, FormWindow& window, int id)
{
    using Create = std::unique_ptr<PeerBase> (*)(Control&, FormWindow&, int);
    static constexpr Create kinds[] = {
        &TryCreate<Label, LabelPeer>,       &TryCreate<Button, ButtonPeer>,
        &TryCreate<Image, ImagePeer>,       &TryCreate<ListView, ListViewPeer>,
        &TryCreate<TreeView, TreeViewPeer>, &TryCreate<TabStrip, TabStripPeer>,
        &TryCreate<ToolBar, ToolBarPeer>,   &TryCreate<StatusBar, StatusBarPeer>,
        &TryCreate<Splitter, SplitterPeer>, &TryCreate<ProgressBar, ProgressBarPeer>,
        &TryCreate<TextBox, TextBoxPeer>,   &TryCreate<CheckBox, CheckBoxPeer>,
        &TryCreate<ListBox, ListBoxPeer>,   &TryCreate<ComboBox, ComboBoxPeer>,
        &TryCreate<Frame, FramePeer>,       &TryCreate<UpDown, UpDownPeer>,
    };
    for (const Create create : kinds) {
        if (auto peer = create(control, window, id)) {
            peer->DpiChanged();
            return peer;
        }
    }
    throw std::logic_error{"no native control for a " + std::string{control.TypeName()}};
}

} // namespace ui::win32
