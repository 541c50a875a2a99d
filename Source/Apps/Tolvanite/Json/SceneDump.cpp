#include "SceneDump.h"

#include <algorithm>
#include <string>
#include <vector>

#include "AttachmentJson.h"
#include "MaterialJson.h"
#include "OSGGeometry.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGMultiSwitch.h"
#include "OSGName.h"
#include "OSGNodeWalker.h"
#include "OSGShownText.h"
#include "OSGSwitch.h"
#include "OSGTransform.h"
#include "OSGVisitSubTree.h"
#include "ValueJson.h"

namespace Tool
{
namespace
{
using OSG::Node;
using OSG::NodeCore;

/// Walks the children of a node and then the tree that the node visits.
class TreeVisitor
{
  public:
    bool takeAdded(std::vector<Node *> &nodes)
    {
        return children_and_other_tree(_levels.back().node, nodes);
    }

  protected:
    enum class Place
    {
        Root,
        Child,
        OtherTree
    };
    struct Level
    {
        Node *node;
        OSG::UInt32 childrenBegun = 0;
        bool hasOtherTree = false; ///< its member has been begun
    };

    static Node *other_tree(Node const *node)
    {
        return node->getCore() != nullptr ? node->getCore()->getOtherTree() : nullptr;
    }

    Place begin(Node *node)
    {
        Place place = Place::Root;
        if(!_levels.empty())
        {
            Level &above = _levels.back();
            place =
                above.childrenBegun < above.node->getNChildren() ? Place::Child : Place::OtherTree;
            if(place == Place::Child)
                ++above.childrenBegun;
            else
                above.hasOtherTree = true;
        }
        // The volumes of a visited tree may not have been computed yet.
        if(place == Place::OtherTree)
            node->updateVolume();
        _levels.push_back({node});
        return place;
    }
    Level end()
    {
        Level const level = _levels.back();
        _levels.pop_back();
        return level;
    }
    std::size_t depth() const { return _levels.size(); }

  private:
    std::vector<Level> _levels;
};

void write_core(JsonWriter &json, NodeCore *core, Arrays arrays)
{
    if(auto const *const transform = dynamic_cast<OSG::Transform *>(core))
    {
        json.key("matrix");
        write_matrix(json, transform->getMatrix());
    }
    else if(auto const *const choice = dynamic_cast<OSG::Switch *>(core))
        json.member("choice", choice->getChoice());
    else if(auto const *const choices = dynamic_cast<OSG::MultiSwitch *>(core))
        json.member("mode", choices->getSwitchMode())
            .key("choices")
            .array(*choices->getMFChoices(), choices->getMFChoices()->size());
    else if(auto const *const group = dynamic_cast<OSG::MaterialGroup *>(core))
    {
        json.key("material");
        write_material(json, group->getMaterial());
    }
    else if(auto const *const override = dynamic_cast<OSG::MaterialChunkOverrideGroup *>(core))
    {
        json.key("material");
        write_material(json, override->getMaterial());
    }
    else if(auto const *const geometry = dynamic_cast<OSG::Geometry *>(core))
        write_geometry(json, *geometry, arrays);
}

class TreeWriter : public TreeVisitor
{
  public:
    TreeWriter(JsonWriter &json, Arrays arrays)
        : _json(json)
        , _arrays(arrays)
    {
    }

    bool enter(Node *node)
    {
        if(begin(node) == Place::OtherTree)
            _json.endArray().key("subTree");
        _json.beginObject().key("name");
        write_name(_json, node);
        _json.key("core");
        if(node->getCore() != nullptr)
            _json.value(node->getCore()->getType().getCName());
        else
            _json.null();
        _json.key("bounds");
        write_bounds(_json, node->getVolume());
        _json.key("children").beginArray();
        return true;
    }

    void leave(Node *node)
    {
        if(!end().hasOtherTree)
        {
            _json.endArray();
            if(dynamic_cast<OSG::VisitSubTree *>(node->getCore()) != nullptr)
                _json.key("subTree").null();
        }
        write_core(_json, node->getCore(), _arrays);
        write_attachments(_json, node, node->getCore());
        _json.endObject();
    }

  private:
    JsonWriter &_json;
    Arrays _arrays;
};

void print_bounds(std::ostream &out, OSG::BoxVolume const &bounds)
{
    if(bounds.isEmpty() || bounds.isInfinite())
        return;
    OSG::Pnt3f const &min = bounds.getMin();
    OSG::Pnt3f const &max = bounds.getMax();
    out << "  [" << min[0] << ' ' << min[1] << ' ' << min[2] << " to " << max[0] << ' ' << max[1]
        << ' ' << max[2] << ']';
}

void print_geometry(std::ostream &out, OSG::Geometry const &geometry)
{
    out << "  " << (geometry.getTypes() != nullptr ? geometry.getTypes()->size() : 0)
        << " primitives";
    if(geometry.getPositions() != nullptr)
        out << ", " << geometry.getPositions()->size() << " positions";
    if(geometry.getMaterial() == nullptr)
        return;
    char const *const material = OSG::getName(geometry.getMaterial());
    out << ", "
        << OSG::shown_text(material != nullptr ? material
                                               : geometry.getMaterial()->getType().getCName());
}

class TreePrinter : public TreeVisitor
{
  public:
    explicit TreePrinter(std::ostream &out)
        : _out(out)
    {
    }

    bool enter(Node *node)
    {
        std::size_t const level = depth();
        bool const visited = begin(node) == Place::OtherTree;
        _out << std::string(2 * std::min<std::size_t>(level, 40), ' ') << (visited ? "@ " : "");
        NodeCore *const core = node->getCore();
        _out << (core != nullptr ? core->getType().getCName() : "no core");
        if(char const *const name = OSG::getName(node))
            _out << " \"" << OSG::shown_text(name) << '"';
        print_bounds(_out, node->getVolume());
        if(auto const *const geometry = dynamic_cast<OSG::Geometry *>(core))
            print_geometry(_out, *geometry);
        _out << '\n';
        return true;
    }
    void leave(Node *) { end(); }

  private:
    std::ostream &_out;
};
} // namespace

void write_tree(JsonWriter &json, Node *root, Arrays arrays)
{
    TreeWriter writer(json, arrays);
    OSG::NodeWalker().walk(root, writer);
}

void print_tree(std::ostream &out, Node *root)
{
    TreePrinter printer(out);
    OSG::NodeWalker().walk(root, printer);
}
} // namespace Tool
