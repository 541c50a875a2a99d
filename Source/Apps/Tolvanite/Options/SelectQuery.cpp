#include "SelectQuery.h"

#include <charconv>
#include <cmath>
#include <vector>

#include <nlohmann/json.hpp>

namespace Tool
{
namespace
{
using Json = nlohmann::json;

/// The form of a key's value.
enum class Form
{
    Number,
    Numbers, // a list
    Pairs,   // a list of an even count of numbers
    Point,   // a list of three numbers
    Points,  // a list of such lists
    Text,
    Truth
};

struct Key
{
    std::string_view name;
    Form form;
    std::size_t count; // of the numbers or points of a list
    char const *wanted;
};

constexpr Key Keys[] = {{"corners", Form::Points, 8, "a list of eight points"},
                        {"box", Form::Points, 2, "a list of two points"},
                        {"from", Form::Point, 3, "a list of three numbers"},
                        {"at", Form::Point, 3, "a list of three numbers"},
                        {"up", Form::Point, 3, "a list of three numbers"},
                        {"fov", Form::Number, 1, "a number"},
                        {"ortho", Form::Number, 1, "a number"},
                        {"size", Form::Numbers, 2, "a list of two whole numbers from 1"},
                        {"pixel", Form::Numbers, 2, "a list of two numbers"},
                        {"rect", Form::Numbers, 4, "a list of four numbers"},
                        {"lasso", Form::Pairs, 0, "a list of numbers"},
                        {"radius", Form::Number, 1, "a number"},
                        {"kinds", Form::Text, 1, "a string"},
                        {"plane", Form::Text, 1, "a string"},
                        {"hits", Form::Text, 1, "a string"},
                        {"fast", Form::Truth, 1, "true or false"},
                        {"enclosed", Form::Truth, 1, "true or false"}};
constexpr std::size_t NumKeys = std::size(Keys);
constexpr std::size_t MostNumbers = 24; // of the eight corners

[[noreturn]] void refuse(std::string const &reason)
{
    throw CLI::ParseError(reason, CLI::ExitCodes::ValidationError);
}

OSG::Pnt3f point_at(float const *numbers) { return {numbers[0], numbers[1], numbers[2]}; }

/// Takes the query from the events of a parser, without a tree of the line.
class QueryReader : public nlohmann::json_sax<Json>
{
  public:
    explicit QueryReader(SelectQuery &query)
        : _query(query)
    {
    }

    bool start_object(std::size_t) override
    {
        if(_isOpen)
            refuseValue();
        if(_depth != 0)
            refuseLine();
        return _isOpen = true;
    }
    bool end_object() override { return true; }
    bool key(std::string &name) override;

    bool start_array(std::size_t) override;
    bool end_array() override;

    bool number_integer(number_integer_t number) override
    {
        return take(static_cast<float>(number), static_cast<double>(number));
    }
    bool number_unsigned(number_unsigned_t number) override
    {
        return take(static_cast<float>(number), static_cast<double>(number));
    }
    bool number_float(number_float_t number, std::string const &text) override;
    bool string(std::string &text) override;
    bool boolean(bool truth) override;
    bool null() override { refuseValue(); }
    bool binary(binary_t &) override { refuseValue(); }
    bool parse_error(std::size_t, std::string const &, Json::exception const &error) override
    {
        constexpr int OutOfRange = 406;
        if(error.id == OutOfRange)
            refuseNumber();
        refuseLine();
    }

  private:
    [[noreturn]] static void refuseLine() { refuse("no JSON object"); }
    [[noreturn]] static void refuseNumber() { refuse("a number is beyond 32 bits"); }
    [[noreturn]] void refuseValue() const
    {
        if(_key == nullptr)
            refuseLine();
        refuse(std::string(_key->name) + ": " + _key->wanted + " is required");
    }
    void expect(Form form) const
    {
        if(_key == nullptr || _key->form != form)
            refuseValue();
    }
    bool take(float rounded, double number);
    void finishNumbers();
    template <std::size_t N>
    std::array<OSG::Pnt3f, N> points() const;

    SelectQuery &_query;
    Key const *_key = nullptr;
    bool _isOpen = false;
    unsigned _depth = 0;    // of lists
    std::size_t _place = 0; // in the innermost list
    OSG::UInt32 _seen = 0;  // a bit for each key
    std::size_t _count = 0;
    float _numbers[MostNumbers];
    double _wide[MostNumbers]; // as the line has them
};

bool QueryReader::key(std::string &name)
{
    std::size_t index = 0;
    while(index < NumKeys && Keys[index].name != name)
        ++index;
    if(index == NumKeys)
        refuse("unknown key " + name);
    if((_seen & OSG::UInt32(1) << index) != 0)
        refuse("the key " + name + " stands twice");
    _seen |= OSG::UInt32(1) << index;
    _key = &Keys[index];
    _count = 0;
    return true;
}

bool QueryReader::start_array(std::size_t)
{
    bool const isPoints = _key != nullptr && _key->form == Form::Points;
    bool const isList =
        isPoints || (_key != nullptr && (_key->form == Form::Point || _key->form == Form::Numbers ||
                                         _key->form == Form::Pairs));
    if(!isList || _depth == (isPoints ? 2u : 1u))
        refuseValue();
    ++_depth;
    _place = 0;
    if(_key->form == Form::Pairs)
        _query.volume.lasso.emplace();
    return true;
}

// The end of a point within a list, or of the whole list.
bool QueryReader::end_array()
{
    if(_depth == 2 && _place != 3)
        refuseValue();
    if(--_depth == 0)
        finishNumbers();
    return true;
}

bool QueryReader::take(float rounded, double number)
{
    bool const isInPlace = _key != nullptr && (_key->form == Form::Number   ? _depth == 0
                                               : _key->form == Form::Points ? _depth == 2
                                                                            : _depth == 1);
    bool const isPairs = isInPlace && _key->form == Form::Pairs;
    if(!isInPlace || (!isPairs && _count == MostNumbers))
        refuseValue();
    if(!std::isfinite(rounded))
        refuseNumber();
    if(isPairs)
    {
        _query.volume.lasso->push_back(rounded);
        return true;
    }
    _numbers[_count] = rounded;
    _wide[_count++] = number;
    ++_place;
    if(_depth == 0)
        finishNumbers();
    return true;
}

// The text is rounded once. A number too small for 32 bits is a zero.
bool QueryReader::number_float(number_float_t number, std::string const &text)
{
    float rounded = std::signbit(number) ? -0.f : 0.f;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), rounded);
    if(result.ec == std::errc::result_out_of_range && std::abs(number) > 1)
        refuseNumber();
    return take(rounded, number);
}

template <std::size_t N>
std::array<OSG::Pnt3f, N> QueryReader::points() const
{
    std::array<OSG::Pnt3f, N> result;
    for(std::size_t i = 0; i < N; ++i)
        result[i] = point_at(_numbers + 3 * i);
    return result;
}

void QueryReader::finishNumbers()
{
    if(_key->form == Form::Pairs)
    {
        if(_query.volume.lasso->empty())
            refuseValue();
        return;
    }
    if(_count != (_key->form == Form::Points ? 3 * _key->count : _key->count))
        refuseValue();
    VolumeValues &volume = _query.volume;
    std::string_view const name = _key->name;
    if(name == "corners")
        volume.corners = points<8>();
    else if(name == "box")
        volume.box = points<2>();
    else if(name == "from")
        volume.from = point_at(_numbers);
    else if(name == "at")
        volume.at = point_at(_numbers);
    else if(name == "up")
        volume.up = point_at(_numbers);
    else if(name == "fov")
        volume.fieldOfView = _numbers[0];
    else if(name == "ortho")
        volume.orthographicHeight = _numbers[0];
    else if(name == "size")
        volume.size = {_wide[0], _wide[1]};
    else if(name == "pixel")
        volume.pixel = {_numbers[0], _numbers[1]};
    else if(name == "rect")
        volume.rectangle = {_numbers[0], _numbers[1], _numbers[2], _numbers[3]};
    else
        volume.radius = _numbers[0];
}

bool QueryReader::string(std::string &text)
{
    expect(Form::Text);
    if(_key->name == "kinds")
        set_kinds(_query.settings, text);
    else if(_key->name == "plane")
        set_plane(_query.settings, text);
    else
        set_hits(_query.settings, text);
    return true;
}

bool QueryReader::boolean(bool truth)
{
    expect(Form::Truth);
    (_key->name == "fast" ? _query.settings.fast : _query.settings.enclosed) = truth;
    return true;
}
} // namespace

SelectQuery parse_query(std::string_view line, SelectionSettings const &defaults)
{
    SelectQuery query{{}, defaults};
    QueryReader reader(query);
    Json::sax_parse(line.begin(), line.end(), &reader);
    return query;
}
} // namespace Tool
