#pragma once

#include <memory>

namespace ui {
class Control;
}

namespace ui::win32 {

class FormWindow;
class PeerBase;

/// The peer for a control of any kind; `id` is the number its window gets unless its role asks for another.
std::unique_ptr<PeerBase> CreateControlPeer(Control& control, FormWindow& window, int id);

} // namespace ui::win32
