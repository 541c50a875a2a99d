#include "ReferenceObjReader.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstdlib>
#include <limits>
#include <list>
#include <map>

#include "OSGShownText.h"

namespace OSG::Test
{
namespace
{
struct SlowMesh
{
    std::list<std::vector<ObjTiePoint>> faces;
    Int32 material = ObjRecords::NoMaterial;
};

std::string extract_token(std::istream &in)
{
    std::string token;
    in >> token;
    return token;
}

Real32 extract_number(std::istream &in)
{
    Real32 number = 0;
    in >> number;
    return in.fail() ? 0.0f : number;
}

void skip_line(std::istream &in) { in.ignore(2147483647, '\n'); }

class SlowObjReader
{
  public:
    explicit SlowObjReader(std::istream &in)
        : _in(in)
        , _meshes(1)
    {
    }

    ObjOutcome read()
    {
        std::string previous;
        for(;;)
        {
            std::string const token = extract_token(_in);
            if(_in.eof() || _in.fail())
                break;
            if(token[0] == '#' || token[0] == '$')
            {
                skip_line(_in);
                continue;
            }
            ++_outcome.elements;
            element(token, previous);
            previous = token;
        }
        for(SlowMesh const &mesh : _meshes)
            _outcome.meshes.push_back({{mesh.faces.begin(), mesh.faces.end()}, mesh.material});
        return _outcome;
    }

  private:
    void element(std::string const &token, std::string const &previous)
    {
        if(token == "v" || token == "vn")
        {
            Real32 const x = extract_number(_in);
            Real32 const y = extract_number(_in);
            Real32 const z = extract_number(_in);
            if(token == "v")
                _outcome.positions.emplace_back(x, y, z);
            else
                _outcome.normals.emplace_back(x, y, z);
        }
        else if(token == "vt")
        {
            Real32 const u = extract_number(_in);
            Real32 const v = extract_number(_in);
            _outcome.texCoords.emplace_back(u, v);
        }
        else if(token == "f" || token == "fo")
        {
            face();
        }
        else if(token == "mtllib")
        {
            _outcome.events.push_back("library " + extract_token(_in));
            skip_line(_in);
        }
        else if(token == "usemtl")
        {
            use_material(extract_token(_in));
        }
        else if(token == "g" || token == "s" || token == "o")
        {
            skip_line(_in);
        }
        else
        {
            if(previous != "vt")
                log(LOG_WARNING, "Unkown obj data elem: " + printed(token) + "\n");
            skip_line(_in);
        }
    }

    void use_material(std::string const &name)
    {
        if(!_meshes.front().faces.empty())
            _meshes.emplace_front();
        _outcome.events.push_back("material " + name);
        if(slot_of(name) >= 0)
            _meshes.front().material = slot_of(name);
        else
            log(LOG_FATAL, "Unkown mtl " + printed(name) + "\n");
    }

    void face()
    {
        _meshes.front().faces.emplace_front();
        std::vector<ObjTiePoint> &corners = _meshes.front().faces.front();
        // The group of characters between blanks has had the number that makes it a corner.
        bool hasCorner = false;
        std::vector<char> line(8192);
    next_line:
        _in.get(line.data(), 8192);
        int kind = 0;
        char *cursor = line.data();
        for(;;)
        {
            if(*cursor == 0)
                return;
            if(*cursor == '\\')
            {
                _in.ignore(1);
                goto next_line;
            }
            while(*cursor == '/')
            {
                ++kind;
                ++cursor;
            }
            if(std::isspace(static_cast<unsigned char>(*cursor)))
            {
                kind = 0;
                hasCorner = false;
                while(std::isspace(static_cast<unsigned char>(*cursor)))
                    ++cursor;
                continue;
            }
            char *behind = nullptr;
            long const number = std::strtol(cursor, &behind, 10);
            if(behind == cursor)
                return;
            cursor = behind;
            if(kind == 0)
            {
                corners.emplace_back();
                hasCorner = true;
            }
            if(kind > 2 || !hasCorner)
            {
                while(*cursor != 0 && !std::isspace(static_cast<unsigned char>(*cursor)))
                    ++cursor;
                continue;
            }
            corners.back().index[kind] = index_of(number, kind);
        }
    }

    Int32 index_of(long number, int kind) const
    {
        std::size_t const counts[] = {_outcome.positions.size(), _outcome.texCoords.size(),
                                      _outcome.normals.size()};
        Int64 const narrow = std::clamp<Int64>(number, INT32_MIN, INT32_MAX);
        return static_cast<Int32>(narrow < 0 ? narrow + static_cast<Int64>(counts[kind])
                                             : narrow - 1);
    }

    static std::string printed(std::string const &text) { return shown_text(text); }
    void log(LogLevel level, std::string const &text)
    {
        _outcome.messages.push_back({level, text});
    }

    std::istream &_in;
    std::list<SlowMesh> _meshes;
    ObjOutcome _outcome;
};
} // namespace

ObjOutcome read_obj_slowly(std::string const &text, PieceBuffer::Habits const &habits)
{
    PieceBuffer buffer(text, habits);
    std::istream in(&buffer);
    in.imbue(std::locale::classic());
    ObjOutcome outcome = SlowObjReader(in).read();
    outcome.state = in.rdstate();
    outcome.rest = buffer.rest();
    return outcome;
}

namespace
{
/// Notes what a library says, in the words of MtlEvents.
class SlowMtlReader
{
  public:
    explicit SlowMtlReader(std::istream &in)
        : _in(in)
    {
    }

    ObjOutcome read()
    {
        for(;;)
        {
            std::string const token = extract_token(_in);
            if(_in.eof() || _in.fail())
                break;
            if(token[0] == '#' || token[0] == '$')
                skip_line(_in);
            else if(token == "newmtl")
                new_material();
            else if(_count == 0)
                refuse(LOG_FATAL, "Invalid Mtl token: " + shown_text(token) +
                                      ", newmtl expected in lib.mtl\n");
            else
                entry(token);
        }
        note("count " + std::to_string(_count));
        return _outcome;
    }

  private:
    void new_material()
    {
        note("new " + extract_token(_in));
        ++_count;
        _mapped.clear();
    }

    void entry(std::string const &token)
    {
        static std::map<std::string, std::string> const colors = {
            {"Kd", "diffuse"}, {"Ka", "ambient"}, {"Ks", "specular"}};
        if(colors.count(token) != 0)
            color(token, colors.at(token));
        else if(token.compare(0, 4, "map_") == 0 && colors.count(token.substr(4)) != 0)
            image(token.substr(4), colors.at(token.substr(4)));
        else if(token == "Ns")
            note("shininess " + number_text(extract_number(_in)));
        else if(token == "Tr")
            note("transparency " + number_text(extract_number(_in)));
        else if(token == "d")
            note("transparency " + number_text(1 - extract_number(_in)));
        else if(token == "refl")
            note("environment");
        else if(token == "illum" || token == "decal" || token == "bump")
            extract_token(_in);
        else if(token == "Ni" || token == "sharpness")
            extract_number(_in);
        else if(token == "Tf")
            drop_three_numbers();
        else
            refuse(LOG_WARNING, "Invalid " + shown_text(token) + " entry in lib.mtl\n");
    }

    void color(std::string const &key, std::string const &name)
    {
        Real32 const r = extract_number(_in);
        Real32 const g = extract_number(_in);
        Real32 const b = extract_number(_in);
        if(!_mapped[key])
            note(name + ' ' + number_text(r) + ' ' + number_text(g) + ' ' + number_text(b));
    }

    void image(std::string const &key, std::string const &name)
    {
        std::string const file = extract_token(_in);
        if(file.empty() || file.compare(0, 2, "no") == 0)
        {
            note("missing " + file);
            _outcome.messages.push_back({LOG_FATAL, "Can not find " + shown_text(file) +
                                                        " texture file in mtl lib.mtl \n"});
            return;
        }
        note("image " + file);
        _mapped[key] = true;
        note(name + " 1 1 1");
    }

    void drop_three_numbers()
    {
        for(int i = 0; i < 3; ++i)
            extract_number(_in);
    }

    void refuse(LogLevel level, std::string const &text)
    {
        _outcome.messages.push_back({level, text});
        skip_line(_in);
    }

    static std::string number_text(Real32 number)
    {
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, "%.9g", static_cast<double>(number));
        return buffer;
    }
    void note(std::string const &event) { _outcome.events.push_back(event); }

    std::istream &_in;
    int _count = 0;
    std::map<std::string, bool> _mapped;
    ObjOutcome _outcome;
};
} // namespace

ObjOutcome read_mtl_slowly(std::string const &text, PieceBuffer::Habits const &habits)
{
    PieceBuffer buffer(text, habits);
    std::istream in(&buffer);
    in.imbue(std::locale::classic());
    ObjOutcome outcome = SlowMtlReader(in).read();
    outcome.state = in.rdstate();
    outcome.rest = buffer.rest();
    return outcome;
}
} // namespace OSG::Test
