#include "Plant.h"

#include <string>

#include "OSGChunkMaterial.h"
#include "OSGDirectionalLight.h"
#include "OSGGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGMultiSwitch.h"
#include "OSGName.h"
#include "OSGSimpleMaterial.h"
#include "OSGSwitch.h"
#include "OSGSwitchMaterial.h"
#include "OSGTransform.h"
#include "Shapes.h"

namespace
{
using NodePtr = OSG::UnrecordedRefPtr<OSG::Node>;
using MaterialPtr = OSG::UnrecordedRefPtr<OSG::Material>;

// --- nodes; each function appends a child to `above` ---

NodePtr add_node(OSG::Node *above, std::string const &name, OSG::NodeCore *core)
{
    NodePtr node(OSG::Node::create());
    node->setCore(core);
    if(!name.empty())
        OSG::setName(node, name);
    if(above != nullptr)
        above->addChild(node);
    return node;
}

/// A node with a new core of the class `Core`. The node owns the core, so the pointer is valid as
/// long as the node.
template <class Core>
NodePtr add(OSG::Node *above, std::string const &name, Core **made = nullptr)
{
    OSG::UnrecordedRefPtr<Core> const core(Core::create());
    if(made != nullptr)
        *made = core;
    return add_node(above, name, core);
}

NodePtr add_place(OSG::Node *above, std::string const &name, float x, float y, float z)
{
    OSG::Transform *core = nullptr;
    NodePtr node = add<OSG::Transform>(above, name, &core);
    OSG::Matrix matrix;
    matrix.setTranslate(x, y, z);
    core->setMatrix(matrix);
    return node;
}

NodePtr add_material(OSG::Node *above, std::string const &name, OSG::Material *material)
{
    OSG::MaterialGroup *core = nullptr;
    NodePtr node = add<OSG::MaterialGroup>(above, name, &core);
    core->setMaterial(material);
    return node;
}

MaterialPtr make_paint(char const *name, OSG::Color3f const &color)
{
    OSG::UnrecordedRefPtr<OSG::SimpleMaterial> const material(OSG::SimpleMaterial::create());
    material->setDiffuse(color);
    OSG::setName(material, name);
    return MaterialPtr(material);
}

// --- parts of the plant ---

void add_sun(OSG::Node *plant)
{
    OSG::DirectionalLight *light = nullptr;
    NodePtr const sun = add<OSG::DirectionalLight>(plant, "sun", &light);
    light->setBeacon(add_place(plant, "sun beacon", 20, 40, 10));
}

void add_tanks(OSG::Node *plant)
{
    MaterialPtr const steel = make_paint("steel", {0.7f, 0.7f, 0.75f});
    MaterialPtr const yellow = make_paint("yellow", {0.9f, 0.8f, 0.1f});
    // Every tank shows the same two shapes.
    ShapePtr const shell = make_cylinder(1.5f, 4);
    ShapePtr const rung = make_box({-0.3f, 0, 1.5f}, {0.3f, 0.05f, 1.6f});
    NodePtr const tanks = add<OSG::Group>(plant, "tanks");
    for(int i = 0; i < 6; ++i)
    {
        std::string const name = "tank " + std::to_string(i + 1);
        NodePtr const tank = add_place(tanks, name, 4.0f * static_cast<float>(i), 0, 0);
        add_node(add_material(tank, "", steel), "shell", shell);
        NodePtr const ladder = add_material(add<OSG::Group>(tank, "ladder"), "", yellow);
        for(int step = 0; step < 8; ++step)
            add_node(add_place(ladder, "", 0, 0.5f * static_cast<float>(step), 0), "rung", rung);
    }
}

void add_pipes(OSG::Node *plant)
{
    // Pipes have the colour of their contents. The switch material chooses the second colour.
    OSG::UnrecordedRefPtr<OSG::SwitchMaterial> const content(OSG::SwitchMaterial::create());
    content->editMFMaterials()->push_back(make_paint("water", {0.1f, 0.4f, 0.8f}));
    content->editMFMaterials()->push_back(make_paint("steam", {0.8f, 0.3f, 0.1f}));
    content->setChoice(1);
    OSG::setName(content, "content");
    NodePtr const pipes = add<OSG::Group>(plant, "pipes");
    NodePtr const main = add<OSG::Group>(add<OSG::Group>(pipes, "level 1"), "main line");
    for(int i = 0; i < 5; ++i)
    {
        ShapePtr const pipe = make_box({1.5f, 0.4f, -0.1f}, {2.5f, 0.6f, 0.1f});
        pipe->setMaterial(content);
        add_node(add_place(main, "", 4.0f * static_cast<float>(i), 0, 0), "pipe", pipe);
    }
}

void add_valve(OSG::Node *plant)
{
    OSG::Switch *state = nullptr;
    NodePtr const valve = add<OSG::Switch>(add_place(plant, "valve", 2, 0.6f, 0), "state", &state);
    add_node(valve, "open", make_box({-0.05f, 0, -0.4f}, {0.05f, 0.1f, 0.4f}));
    add_node(valve, "closed", make_box({-0.4f, 0, -0.05f}, {0.4f, 0.1f, 0.05f}));
    state->setChoice(0);
}

void add_layers(OSG::Node *plant)
{
    OSG::MultiSwitch *layers = nullptr;
    NodePtr const node = add<OSG::MultiSwitch>(plant, "layers", &layers);
    NodePtr const floor = add<OSG::Group>(node, "floor");
    add_node(floor, "slab", make_box({-3, -0.2f, -3}, {23, 0, 3}));
    add_node(add<OSG::Group>(node, "roof"), "sheet", make_box({-3, 6, -3}, {23, 6.1f, 3}));
    NodePtr const frame = add<OSG::Group>(node, "frame");
    for(int i = 0; i < 4; ++i)
        add_node(add_place(frame, "", 7.0f * static_cast<float>(i), 0, -2.8f), "column",
                 make_box({-0.1f, 0, -0.1f}, {0.1f, 6, 0.1f}));
    layers->setSwitchMode(OSG::MultiSwitch::ShowChoices);
    layers->editChoices() = {0, 2};
}

// What editing may leave behind: empty groups, an empty geometry, a material without chunks.
void add_leftovers(OSG::Node *plant)
{
    NodePtr const drafts = add<OSG::Group>(plant, "drafts");
    add<OSG::Group>(add<OSG::Group>(drafts, "old"), "older");
    add_place(drafts, "moved away", 1, 0, 0);
    add<OSG::Geometry>(drafts, "sketch");
    OSG::UnrecordedRefPtr<OSG::ChunkMaterial> const nothing(OSG::ChunkMaterial::create());
    ShapePtr const outline = make_box({0, 0, 0}, {1, 1, 1});
    outline->setMaterial(nothing);
    add_node(drafts, "outline", outline);
}
} // namespace

OSG::UnrecordedRefPtr<OSG::Node> make_plant()
{
    NodePtr plant = add<OSG::Group>(nullptr, "plant");
    add_sun(plant);
    add_tanks(plant);
    add_pipes(plant);
    add_valve(plant);
    add_layers(plant);
    add_leftovers(plant);
    return plant;
}
