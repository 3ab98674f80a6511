// A tree whose nodes can be checked.
#pragma once

#include "framework/control/Control.h"

#include <commctrl.h>

namespace korvane
{

class TreeView : public Control
{
public:
    using Node = HTREEITEM;

    TreeView(Surface surface, const Design& design) : Control(surface, design) {}

    /// Adds a node behind its siblings.
    /// @param parent null for a top node. @param data whatever the owner wants to know the node by.
    Node AddNode(Node parent, BSTR text, const void* data, bool checked);
    void Clear();
    void Remove(Node node);
    void* data(Node node) const noexcept;
    bool Checked(Node node) const noexcept;
    void setChecked(Node node, bool checked);
    /// Selects a node and shows it, its parents expanded.
    void select(Node node) noexcept;

    /// The user has checked or unchecked a node; setChecked does not raise it.
    std::function<void(Node)> onNodeCheck;

    void placed() override;
    void closing() noexcept override;
    LRESULT notified(const NMHDR& notification) override;
    void posted(LPARAM value) override;

protected:
    HWND createWindow(HWND parent, int id) override;

private:
    Node nodeUnderPointer() const noexcept;

    Node toggled_ = nullptr; ///< may have been toggled by the message at hand
    Node toShow_ = nullptr;  ///< once the tree has its place
    bool setting_ = false;   ///< the change at hand is the owner's
};

} // namespace korvane
