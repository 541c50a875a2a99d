#include "SelectQueries.h"

#include <sstream>
#include <system_error>

#include "OSGLog.h"
#include "SelectionJson.h"
#include "Stopwatch.h"

namespace Tool
{
namespace
{
/// Answers lines and collects the answers.
class QueryAnswers
{
  public:
    QueryAnswers(QueryDefaults const &defaults, Selector &selector, Scene const &scene,
                 std::ostream &out)
        : _defaults(defaults)
        , _selector(selector)
        , _scene(scene)
        , _out(out)
    {
    }

    void answer(LineReader::Line const &line);
    /// Writes out what was collected.
    void flush();
    bool hasBadLines() const { return _hasBadLines; }
    void logTimes(double allSeconds) const;

  private:
    static constexpr std::streamoff MostCollected = 256 << 10; // bytes

    Selection selectionOf(LineReader::Line const &line);
    void writeAnswer(Selection const &selection);
    void writeError(std::string const &reason);

    QueryDefaults const &_defaults;
    Selector &_selector;
    Scene const &_scene;
    std::ostream &_out;
    std::ostringstream _text;
    JsonWriter _json{_text};
    std::size_t _number = 0;
    bool _hasBadLines = false;
    double _readSeconds = 0;
    double _answerSeconds = 0;
    double _printSeconds = 0;
};

Selection QueryAnswers::selectionOf(LineReader::Line const &line)
{
    if(line.isTooLong)
        throw CLI::ParseError("a line of more than " + std::to_string(LineReader::MostBytes) +
                                  " bytes",
                              CLI::ExitCodes::ValidationError);
    Stopwatch const reading;
    SelectQuery const query = parse_query(line.text, _defaults.settings);
    VolumeChoice const volume(query.volume, _defaults.radius);
    volume.checkPlane(query.settings.plane);
    _readSeconds += reading.seconds();
    Selection const selection = _selector.select(query.settings, volume);
    _answerSeconds += selection.seconds;
    return selection;
}

void QueryAnswers::answer(LineReader::Line const &line)
{
    if(line.text.find_first_not_of(" \t\r\f\v") == std::string_view::npos && !line.isTooLong)
        return;
    try
    {
        Selection const selection = selectionOf(line);
        Stopwatch const printing;
        writeAnswer(selection);
        _printSeconds += printing.seconds();
    }
    catch(CLI::ParseError const &error)
    {
        writeError(error.what());
    }
    ++_number;
    _text << '\n';
    if(_text.tellp() > MostCollected)
        flush();
}

void QueryAnswers::writeAnswer(Selection const &selection)
{
    _json.beginObject().member("query", _number);
    write_hits(_json, selection, _scene.root);
    _json.member("complete", _scene.isComplete).member("indexed", selection.isIndexed).endObject();
}

void QueryAnswers::writeError(std::string const &reason)
{
    _hasBadLines = true;
    _json.beginObject().member("query", _number).member("error", reason).endObject();
}

void QueryAnswers::flush()
{
    Stopwatch const printing;
    _out << _text.view() << std::flush;
    _text.str(std::string());
    _printSeconds += printing.seconds();
}

void QueryAnswers::logTimes(double allSeconds) const
{
    OSG_LOG_PROGRESS(
        "%zu queries in %.3f s: read in %.3f s, answered in %.3f s, printed in %.3f s\n", _number,
        allSeconds, _readSeconds, _answerSeconds, _printSeconds);
}
} // namespace

int answer_queries(LineReader &lines, QueryDefaults const &defaults, Selector &selector,
                   Scene const &scene, Streams streams)
{
    Stopwatch const all;
    QueryAnswers answers(defaults, selector, scene, streams.out);
    LineReader::Line line;
    while(streams.out && lines.next(line, [&answers] { answers.flush(); }))
        answers.answer(line);
    answers.flush();
    answers.logTimes(all.seconds());
    if(lines.error() != 0)
        complain(streams,
                 "cannot read the queries: " + std::generic_category().message(lines.error()));
    return answers.hasBadLines() || lines.error() != 0 ? Failed : Success;
}
} // namespace Tool
