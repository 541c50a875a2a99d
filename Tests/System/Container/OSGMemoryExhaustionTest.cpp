/// \file
/// Every operation at the end of memory: the first block that is not there is each of those that
/// the operation takes, one after the other.

#include <cstring>
#include <functional>
#include <map>
#include <new>
#include <sstream>
#include <thread>

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "OSGAspectLink.h"
#include "OSGChangeList.h"
#include "OSGChunkMaterial.h"
#include "OSGDeepClone.h"
#include "OSGFieldConnector.h"
#include "OSGFieldContainerFactory.h"
#include "OSGGeometryNormals.h"
#include "OSGGraphOpParamSet.h"
#include "OSGImage.h"
#include "OSGIntersectAction.h"
#include "OSGMaterialChunk.h"
#include "OSGMemManager.h"
#include "OSGName.h"
#include "OSGNodeSet.h"
#include "OSGOutStream.h"
#include "OSGSharedIndex.h"
#include "OSGSimpleMaterial.h"
#include "OSGSwitch.h"
#include "OSGSwitchMaterial.h"
#include "OSGThread.h"
#include "OSGTraverse.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
void commit() { Thread::getCurrentChangeList()->commitChanges(); }
UInt32 num_containers() { return FieldContainerFactoryBase::the()->getNumContainers(); }

// --- the scene that operations are tried on ---

/// Made anew for every attempt, while there is memory.
///
///     root  Group                    second  Group
///       group  Group, named            other  Group, of two groups
///         triangle  Geometry         visit  VisitSubTree of group
///       moved  Transform
///         box  Geometry
class World
{
  public:
    World()
    {
        triangle =
            make_node(make_geometry({{4}, {3}, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {}, {0, 1, 2}}));
        group = make_group({triangle});
        setName(group, "a name that is too long to stand in a string without a block");
        box = make_node(make_geometry({{5}, {4}, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}}));
        moved = make_transform(translation(1, 2, 3), {box});
        root = make_group({group, moved});
        other = make_group({make_group(), make_group()});
        second = make_group({other});
        visit = make_visit(group);
        material = ChunkMaterial::create();
        material->addChunk(UnrecordedRefPtr<MaterialChunk>(MaterialChunk::create()));
        commit();
        for(Node *node : {root.get(), second.get(), visit.get()})
            node->updateVolume();
        commit();
    }
    Geometry &geometry() const { return dynamic_cast<Geometry &>(*triangle->getCore()); }

    NodePtr triangle, group, box, moved, root, other, second, visit;
    UnrecordedRefPtr<ChunkMaterial> material;
};

/// The contents of a container and of those that it points to, as text without addresses.
class Description
{
  public:
    std::string of(World const &world)
    {
        for(Node *node :
            {world.root.get(), world.second.get(), world.visit.get(), world.triangle.get(),
             world.group.get(), world.box.get(), world.moved.get(), world.other.get()})
        {
            describe(node);
            _text << " parent";
            name(node->getParent());
        }
        describe(world.material);
        return _text.str();
    }

  private:
    void describe(FieldContainer *container)
    {
        if(!name(container))
            return;
        _text << '{';
        for(FieldDescriptionBase const *field : container->getType().getFieldDescs())
        {
            // Boxes that are out of date may be so without a reason.
            if(std::strcmp(field->getCName(), "volume") != 0)
                describeField(*container->getField(field->getFieldId()), *field);
        }
        if(auto const *core = dynamic_cast<NodeCore *>(container))
            _text << " shown " << core->getParents().size();
        _text << "}\n";
    }
    void describeField(GetFieldHandle const &field, FieldDescriptionBase const &description)
    {
        _text << ' ' << description.getCName() << '=';
        bool const isValue = description.getFieldType().getClass() == FieldClass::Value;
        OutStream out(_text);
        for(UInt32 i = 0; i < field.size(); ++i)
        {
            if(isValue)
                field.pushIndexedValueToStream(out, i);
            else
                describe(field.getPointer(i));
        }
    }
    /// False where the container is null or has a description already.
    bool name(FieldContainer *container)
    {
        if(container == nullptr)
        {
            _text << " null";
            return false;
        }
        auto const [number, isNew] = _numbers.try_emplace(container, _numbers.size());
        _text << ' ' << container->getType().getName() << number->second;
        return isNew;
    }

    std::ostringstream _text;
    std::map<FieldContainer *, std::size_t> _numbers;
};

// --- operations ---

struct Operation
{
    char const *name;
    std::function<void(World &)> run;
};

void PrintTo(Operation const &operation, std::ostream *out) { *out << operation.name; }

/// Sees all nodes.
class Seer : public Action
{
  public:
    Seer()
    {
        registerEnterFunction(VisitSubTree::getClassType(),
                              [](NodeCore *core, Action *action)
                              {
                                  action->addNode(
                                      dynamic_cast<VisitSubTree &>(*core).getSubTreeRoot());
                                  return Continue;
                              });
    }
    ~Seer() override = default;
};

Operation const Operations[] = {
    // --- nodes ---
    {"addChild, new", [](World &w) { w.other->addChild(make_group()); }},
    {"addChild, from another parent", [](World &w) { w.other->addChild(w.box); }},
    {"addChild, with all below it", [](World &w) { w.other->addChild(w.moved); }},
    {"addChild, to the end of its own parent", [](World &w) { w.root->addChild(w.group); }},
    {"addChild, a list that grows",
     [](World &w)
     {
         for(int i = 0; i < 5; ++i)
             w.other->addChild(make_group());
     }},
    {"subChild", [](World &w) { w.root->subChild(w.group); }},
    {"setCore", [](World &w) { w.other->setCore(w.moved->getCore()); }},
    {"setCore, shared by many",
     [](World &w)
     {
         std::vector<NodePtr> nodes;
         for(int i = 0; i < 20; ++i)
             nodes.push_back(make_node(w.triangle->getCore()));
     }},
    {"setCore, none", [](World &w) { w.moved->setCore(nullptr); }},
    {"updateVolume",
     [](World &w)
     {
         w.triangle->invalidateVolume();
         w.visit->updateVolume();
         w.root->updateVolume();
     }},
    {"invalidateVolume", [](World &w) { w.box->invalidateVolume(); }},
    {"invalidateVolume, shown elsewhere", [](World &w) { w.triangle->invalidateVolume(); }},
    {"getWorldVolume",
     [](World &w)
     {
         BoxVolume volume;
         w.box->getWorldVolume(volume);
     }},
    {"getToWorld", [](World &w) { static_cast<void>(w.box->getToWorld()); }},
    {"findNamedComponent", [](World &w) { w.root->findNamedComponent("no such name"); }},
    {"setSubTreeRoot and commit",
     [](World &w)
     {
         dynamic_cast<VisitSubTree &>(*w.visit->getCore()).setSubTreeRoot(w.second);
         commit();
     }},
    // --- attachments ---
    {"setName, new",
     [](World &w) { setName(w.box, "another name, just as long as the first one"); }},
    {"setName, in place of one",
     [](World &w) { setName(w.group, "a new name, just as long too"); }},
    {"setName, none", [](World &w) { setName(w.group, nullptr); }},
    {"addAttachment, shared",
     [](World &w) { w.box->addAttachment(w.group->findAttachment(Name::getClassGroupId())); }},
    {"subAttachment",
     [](World &w) { w.group->subAttachment(w.group->findAttachment(Name::getClassGroupId())); }},
    // --- making ---
    {"create", [](World &) { NodePtr const node(Node::create()); }},
    {"createLocal", [](World &) { NodePtr const node(Node::createLocal(2)); }},
    {"createDependent", [](World &) { NodePtr const node(Node::createDependent(2)); }},
    {"createEmpty", [](World &) { NodePtr const node(Node::createEmpty()); }},
    {"createEmptyLocal", [](World &) { NodePtr const node(Node::createEmptyLocal(2)); }},
    {"createContainer",
     [](World &)
     {
         UnrecordedRefPtr<FieldContainer> const made(
             FieldContainerFactoryBase::the()->createContainer("SimpleMaterial"));
     }},
    {"shallowCopy",
     [](World &w)
     {
         for(Node *node : {w.group.get(), w.visit.get()})
             UnrecordedRefPtr<FieldContainer> const copy(node->shallowCopy());
         UnrecordedRefPtr<FieldContainer> const copy(w.material->shallowCopy());
         UnrecordedRefPtr<FieldContainer> const geometry(w.geometry().shallowCopy());
     }},
    {"shallowCopyLocal",
     [](World &w)
     {
         UnrecordedRefPtr<FieldContainer> const copy(w.material->shallowCopyLocal(4));
         UnrecordedRefPtr<FieldContainer> const other(w.material->shallowCopyDependent(4));
     }},
    {"deepClone", [](World &w) { UnrecordedRefPtr<FieldContainer> const copy(deepClone(w.root)); }},
    {"deepClone, shared and ignored", [](World &w)
     { UnrecordedRefPtr<FieldContainer> const copy(deepClone(w.visit, "Geometry", "Name")); }},
    // --- aspects ---
    {"getAspectStore", [](World &w) { w.box->getAspectStore(); }},
    {"createAspectCopy",
     [](World &w)
     {
         Thread::setCurrentAspect(3);
         struct Back
         {
             ~Back() { Thread::setCurrentAspect(0); }
         } const back;
         UnrecordedRefPtr<FieldContainer> const copy(w.box->createAspectCopy(w.box));
     }},
    // --- fields ---
    {"editField, value",
     [](World &w)
     {
         w.moved->getCore()->editField("matrix")->pushIndexedValueFromCString(
             "1 0 0 0 0 1 0 0 0 0 1 0 5 6 7 1", 0);
     }},
    {"editField, pointers",
     [](World &w)
     {
         w.other->editField("children")->add(w.box);
         w.other->editField("children")->removeIndex(0);
         w.other->editField("core")->add(w.moved->getCore());
     }},
    {"getField", [](World &w) { EXPECT_EQ(w.group->getField("children")->size(), 1u); }},
    {"connect",
     [](World &w)
     {
         FieldConnectorFactoryBase *const all = FieldConnectorFactoryBase::the();
         struct Back
         {
             World &world;
             ~Back() { FieldConnectorFactoryBase::the()->disconnect(world.box.get()); }
         } const back{w};
         EXPECT_TRUE(all->connect(w.box, "travMask", w.other, "travMask"));
         w.box->setTravMask(7);
         commit();
         w.box->setTravMask(~0u);
         commit();
     }},
    {"commit",
     [](World &w)
     {
         w.moved->setTravMask(3);
         commit();
     }},
    // --- walks ---
    {"Action",
     [](World &w)
     {
         Seer seer;
         seer.apply(w.root);
         seer.apply(w.visit);
     }},
    {"traverse", [](World &w) { traverse(w.root, [](Node *) { return ActionBase::Continue; }); }},
    {"IntersectAction",
     [](World &w)
     {
         UnrecordedRefPtr<IntersectAction> const ray(IntersectAction::create());
         ray->setLine(Line(Pnt3f(0.1f, 0.1f, 5), Vec3f(0, 0, -1)));
         ray->apply(w.root);
         ray->apply(w.visit);
     }},
    {"NodeSet",
     [](World &w)
     {
         NodeSet set;
         set.add(w.box);
         set.add(w.root);
     }},
    {"GraphOpParamSet",
     [](World &)
     {
         GraphOpParamSet const params(
             "first=1 second=a-text-that-is-too-long-for-a-small-string x");
         static_cast<void>(params.getUnusedParams());
     }},
    // --- materials ---
    {"addChunk",
     [](World &w)
     {
         for(int i = 0; i < 3; ++i)
             w.material->addChunk(UnrecordedRefPtr<MaterialChunk>(MaterialChunk::create()));
     }},
    {"subChunk", [](World &w) { w.material->subChunk(w.material->getChunks(0)); }},
    {"Image::set",
     [](World &)
     {
         std::vector<UInt8> const pixels(20 * 30 * 3);
         UnrecordedRefPtr<Image> const image(Image::create());
         image->set(20, 30, 3, pixels.data());
     }},
    // --- geometry ---
    {"setProperty",
     [](World &w)
     {
         UnrecordedRefPtr<GeoVec3fProperty> const normals(GeoVec3fProperty::create());
         w.geometry().setNormals(normals);
     }},
    {"setIndices", [](World &w) { w.geometry().setIndices(w.geometry().getIndex(0)); }},
    {"calcVertexNormals", [](World &w) { calcVertexNormals(&w.geometry()); }},
    {"createSharedIndex", [](World &w) { createSharedIndex(&w.geometry()); }},
    {"setMaterial", [](World &w)
     { w.geometry().setMaterial(UnrecordedRefPtr<SimpleMaterial>(SimpleMaterial::create())); }},
};

/// True for an operation of several steps, of which some may be done when memory runs out.
bool has_steps(std::string const &name)
{
    for(char const *one :
        {"addChild, a list", "editField, pointers", "connect", "addChunk", "setSubTreeRoot",
         "commit", "calcVertexNormals", "createSharedIndex", "setIndices"})
    {
        if(name.rfind(one, 0) == 0)
            return true;
    }
    return false;
}

class MemoryExhaustion : public testing::TestWithParam<Operation>
{
  protected:
    enum class End
    {
        Done,
        Failed
    };

    /// Tries the operation on a world of its own, with `blocks` blocks.
    End attempt(UInt64 blocks)
    {
        World world;
        std::string const before = Description().of(world);
        End end = End::Done;
        // A thread of its own has no room for edits yet.
        std::thread(
            [&]
            {
                set_mem_block_limit(blocks);
                try
                {
                    GetParam().run(world);
                }
                catch(std::bad_alloc const &)
                {
                    end = End::Failed;
                }
                set_mem_limit(0);
                commit();
            })
            .join();
        std::string const after = Description().of(world);
        if(end == End::Done)
            _done = after;
        bool const mayBeMadeInPart = end == End::Done || has_steps(GetParam().name);
        EXPECT_TRUE(mayBeMadeInPart || after == before || after == _done)
            << "with " << blocks << " blocks\n"
            << before << "became\n"
            << after;
        checkLinks(world);
        return end;
    }

    /// Every child has its parent, every core its nodes; boxes above one that is out of date are
    /// so.
    static void checkLinks(World const &world)
    {
        for(Node *root : {world.root.get(), world.second.get(), world.visit.get()})
            traverse(root,
                     [](Node *node)
                     {
                         for(UInt32 i = 0; i < node->getNChildren(); ++i)
                         {
                             Node const *const child = node->getChild(i);
                             EXPECT_EQ(child->getParent(), node);
                             EXPECT_EQ(node->findChild(child), static_cast<Int32>(i));
                             EXPECT_TRUE(child->getVolume().isValid() ||
                                         !node->getVolume().isValid());
                         }
                         if(NodeCore const *core = node->getCore())
                         {
                             auto const &all = core->getParents();
                             EXPECT_EQ(std::count(all.begin(), all.end(), node), 1);
                         }
                         return ActionBase::Continue;
                     });
        EXPECT_EQ(world.material->getMFChunks()->size(), world.material->getSlots().size());
    }

  private:
    std::string _done; // what the scene is after the operation
};

std::string name_of(testing::TestParamInfo<Operation> const &info)
{
    std::string name;
    bool upper = true;
    for(char const *c = info.param.name; *c != 0; ++c)
    {
        bool const isLetter = std::isalnum(static_cast<unsigned char>(*c)) != 0;
        if(isLetter)
            name += static_cast<char>(upper ? std::toupper(*c) : *c);
        upper = !isLetter;
    }
    return name;
}
} // namespace

TEST_P(MemoryExhaustion, ChangesNothingOrAllAndLeavesNothingBehind)
{
    // What is made once and kept, and lists that keep their room.
    for(int i = 0; i < 3; ++i)
        ASSERT_EQ(attempt(1000000), End::Done);
    UInt32 const containers = num_containers();
    UInt64 const bytes = get_mem_bytes();
    for(UInt64 blocks = 0;; ++blocks)
    {
        End const end = attempt(blocks);
        EXPECT_EQ(num_containers(), containers) << "with " << blocks << " blocks";
        EXPECT_EQ(get_mem_bytes(), bytes) << "with " << blocks << " blocks";
        if(end == End::Done || HasFailure())
            return;
    }
}

INSTANTIATE_TEST_SUITE_P(Operations, MemoryExhaustion, testing::ValuesIn(Operations), name_of);
} // namespace OSG::Test
