#include "activities/ResourceTree.h"

#include "framework/com/Boundary.h"

#include <algorithm>

namespace korvane
{

ResourceTree::ResourceTree(Surface surface, const Design& design) : tvwNames(surface, design)
{
    tvwNames.onNodeCheck = [this](TreeView::Node node) { toggled(node); };
}

std::uint64_t ResourceTree::key(long nameId, long groupId) noexcept
{
    return std::uint64_t{static_cast<std::uint32_t>(groupId)} << 32 | static_cast<std::uint32_t>(nameId);
}

void ResourceTree::clearGroups()
{
    tvwNames.Clear();
    names_.clear();
    groupsById_.clear();
    groups_.clear();
}

void ResourceTree::addGroup(long id, BSTR text)
{
    Group*& shown = groupsById_[id];
    if (shown)
        return;
    auto group = std::make_unique<Group>();
    group->id = id;
    groups_.reserve(groups_.size() + 1);
    // The tree knows the group by its address: nothing may fail from here on.
    group->node = tvwNames.AddNode(nullptr, text, static_cast<Node*>(group.get()), false);
    shown = group.get();
    groups_.push_back(std::move(group));
}

void ResourceTree::clearNames()
{
    names_.clear();
    for (const auto& group : groups_)
    {
        for (const Node& name : group->names)
            tvwNames.Remove(name.node);
        group->names.clear();
    }
}

void ResourceTree::addName(long id, BSTR text, long groupId)
{
    const auto found = groupsById_.find(groupId);
    if (found == groupsById_.end() || !found->second)
        return;
    Group& group = *found->second;
    Node*& shown = names_[key(id, groupId)];
    if (shown)
        return;
    Node& name = group.names.emplace_back();
    const auto failure = attempt([&] {
        name.id = id;
        name.group = &group;
        name.checked = hasName(id);
        name.node = tvwNames.AddNode(group.node, text, &name, name.checked);
    });
    if (failure)
    {
        group.names.pop_back();
        throw *failure;
    }
    shown = &name;
}

void ResourceTree::toggled(TreeView::Node changed)
{
    auto& node = *static_cast<Node*>(tvwNames.data(changed));
    const bool checked = tvwNames.Checked(changed);
    if (checked == node.checked)
        return;
    node.checked = checked;
    if (node.group)
        setName(node.id, checked);
    else
        for (const Node& name : static_cast<Group&>(node).names)
            setName(name.id, checked);
    showChoice();
}

void ResourceTree::showChoice()
{
    // Redraw is not turned off for this: a platform may take far longer then to change a node that is seen.
    for (const auto& group : groups_)
    {
        bool all = !group->names.empty();
        for (Node& name : group->names)
        {
            show(name, hasName(name.id));
            all = all && name.checked;
        }
        show(*group, all);
    }
}

void ResourceTree::show(Node& node, bool checked)
{
    if (node.checked == checked)
        return;
    node.checked = checked;
    tvwNames.setChecked(node.node, checked);
}

void ResourceTree::select(long nameId, long groupId)
{
    if (const auto found = names_.find(key(nameId, groupId)); found != names_.end() && found->second)
        tvwNames.select(found->second->node);
}

} // namespace korvane
