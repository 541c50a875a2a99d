#include "SceneDump.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

#include "AttachmentJson.h"
#include "MaterialJson.h"
#include "OSGConstSizeTransform.h"
#include "OSGDistanceLOD.h"
#include "OSGGeometry.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGMultiSwitch.h"
#include "OSGName.h"
#include "OSGNodeWalker.h"
#include "OSGScreenLOD.h"
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

/// The walk through children and, behind them, the tree that a node visits. A visited tree is
/// walked where it is met first: shared trees may multiply over many levels.
class TreeVisitor
{
  public:
    bool takeAdded(std::vector<Node *> &nodes)
    {
        Level &level = _levels.back();
        bool const added = children_and_other_tree(level.node, nodes);
        auto const walked = _walked.find(otherTree(level.node));
        if(walked == _walked.end())
            return added;
        level.sameAs = &walked->second;
        nodes.pop_back();
        return true;
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
        bool hasOtherTree = false; ///< begun
        bool isOtherTree = false;
        std::size_t lengthAbove = 0;         ///< of the path of the node above
        std::string const *sameAs = nullptr; ///< path at which the node's other tree was walked
    };

    static Node *otherTree(Node const *node)
    {
        return node->getCore() != nullptr ? node->getCore()->getOtherTree() : nullptr;
    }

    Place begin(Node *node)
    {
        Place place = Place::Root;
        std::size_t const lengthAbove = _path.size();
        if(!_levels.empty())
        {
            Level &above = _levels.back();
            place =
                above.childrenBegun < above.node->getNChildren() ? Place::Child : Place::OtherTree;
            if(place == Place::Child)
                _path += '/' + std::to_string(above.childrenBegun++);
            else
            {
                above.hasOtherTree = true;
                _path = path() + '@';
            }
        }
        // A visited tree may hang where no one has asked for its volume yet.
        if(place == Place::OtherTree)
            node->updateVolume();
        _levels.push_back({node});
        _levels.back().isOtherTree = place == Place::OtherTree;
        _levels.back().lengthAbove = lengthAbove;
        return place;
    }
    Level end()
    {
        Level const level = _levels.back();
        if(level.isOtherTree)
            _walked.emplace(level.node, path());
        _path.resize(level.lengthAbove);
        _levels.pop_back();
        return level;
    }
    /// Of the node that was begun last, as node_path gives it.
    std::string path() const { return _path.empty() || _path.back() == '@' ? _path + '/' : _path; }
    /// Where the other tree of the node that was begun last was walked; null where it was not.
    std::string const *sameAs() const { return _levels.back().sameAs; }
    std::size_t depth() const { return _levels.size(); }

  private:
    std::vector<Level> _levels;
    std::string _path; // a root has nothing behind the `@`, or nothing at all
    std::unordered_map<Node const *, std::string> _walked;
};

void write_core(JsonWriter &json, NodeCore *core, Arrays arrays)
{
    if(auto const *const transform = dynamic_cast<OSG::Transform *>(core))
    {
        json.key("matrix");
        write_matrix(json, transform->getMatrix());
        if(auto const *const sized = dynamic_cast<OSG::ConstSizeTransform *>(core))
            json.member("distance", sized->getDistance());
    }
    else if(auto const *const choice = dynamic_cast<OSG::Switch *>(core))
        json.member("choice", choice->getChoice());
    else if(auto const *const choices = dynamic_cast<OSG::MultiSwitch *>(core))
        json.member("mode", choices->getSwitchMode())
            .key("choices")
            .array(*choices->getMFChoices(), choices->getMFChoices()->size());
    else if(auto const *const distances = dynamic_cast<OSG::DistanceLOD *>(core))
        json.key("center")
            .array(distances->getCenter(), 3)
            .key("range")
            .array(*distances->getMFRange(), distances->getMFRange()->size());
    else if(auto const *const shares = dynamic_cast<OSG::ScreenLOD *>(core))
        json.key("coverage").array(*shares->getMFCoverage(), shares->getMFCoverage()->size());
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
        _json.beginObject().member("path", path()).key("name");
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
        Level const level = end();
        if(!level.hasOtherTree)
        {
            _json.endArray();
            if(level.sameAs != nullptr)
                _json.key("subTree").beginObject().member("sameAs", *level.sameAs).endObject();
            else if(dynamic_cast<OSG::VisitSubTree *>(node->getCore()) != nullptr)
                _json.key("subTree").null();
        }
        write_core(_json, node->getCore(), _arrays);
        if(node->getTravMask() != AllOnes)
            _json.member("travMask", node->getTravMask());
        write_attachments(_json, node, node->getCore());
        _json.endObject();
    }

  private:
    static constexpr OSG::UInt32 AllOnes = 0xFFFFFFFF;

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
        _out << "  " << path() << '\n';
        return true;
    }
    void leave(Node *)
    {
        if(sameAs() != nullptr)
            _out << std::string(2 * std::min<std::size_t>(depth(), 40), ' ') << "@ as at "
                 << *sameAs() << '\n';
        end();
    }

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
