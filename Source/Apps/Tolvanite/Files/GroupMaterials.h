#pragma once

namespace OSG
{
class Node;
}

namespace Tool
{
/// Puts a group with the material of its geometry above each geometry that has one, also in trees
/// that the scene shows. Readers of OBJ files see the materials of groups alone.
///
/// A node with such a geometry becomes the group. It keeps its place, name and attachments; the
/// geometry and the children go to a new node below it. Commits the thread's changes and updates
/// the volumes.
void group_materials(OSG::Node *root);
} // namespace Tool
