// Files of queries: each answer is that of the command line.

#include <sstream>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "Keys.h"
#include "Program.h"

namespace Tool::Test
{
namespace
{
using Words = std::vector<std::string>;

struct Answers
{
    int status;
    std::vector<Json> lines;
    std::string err;
};

Answers ask(std::string const &queries, Words const &more = {})
{
    TextFile const file("queries", queries);
    Words words = {"select", pavilion(), "--queries", file.path()};
    words.insert(words.end(), more.begin(), more.end());
    Outcome const outcome = run_program(words);
    Answers answers{outcome.status, {}, outcome.err};
    std::istringstream in(outcome.out);
    for(std::string line; std::getline(in, line);)
        answers.lines.push_back(Json::parse(line));
    return answers;
}

Json without(Json object, std::initializer_list<char const *> keys)
{
    for(char const *const key : keys)
        object.erase(key);
    return object;
}

/// The answer of the command line, as a line of queries has it.
Json single(Words const &more)
{
    Words words = {"select", pavilion(), "--json"};
    words.insert(words.end(), more.begin(), more.end());
    Outcome const outcome = run_program(words);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return without(Json::parse(outcome.out), {"file", "seconds", "indexed"});
}

std::string const ViewKeys =
    R"("from":[7.5,3.2,9.5],"at":[0,1,0],"up":[0,1,0],"fov":45,"size":[1280,720])";
Words const ViewWords = {"--from", "7.5,3.2,9.5", "--at", "0,1,0",  "--up",
                         "0,1,0",  "--fov",       "45",   "--size", "1280x720"};

Words view_and(Words const &more)
{
    Words words = ViewWords;
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

TEST(SelectQueries, EachLineIsAnsweredAsTheCommandLineIs)
{
    Answers const answers =
        ask("{" + ViewKeys + ",\"pixel\":[640,330]}\n{" + ViewKeys +
            ",\"rect\":[420,300,760,460],\"hits\":\"all\",\"plane\":\"left\"}\n"
            "{\"box\":[[-1,0,-1],[1,1,1]],\"fast\":true}\n{" +
            ViewKeys + ",\"pixel\":[640,330],\"radius\":40,\"hits\":\"back\"}\n");
    EXPECT_EQ(answers.status, 0) << answers.err;
    EXPECT_EQ(answers.err, "");
    ASSERT_EQ(answers.lines.size(), 4u);
    Json const expected[] = {
        single(view_and({"--pixel", "640,330"})),
        single(view_and({"--rect", "420,300,760,460", "--hits", "all", "--plane", "left"})),
        single({"--box", "-1,0,-1", "1,1,1", "--fast"}),
        single(view_and({"--pixel", "640,330", "--radius", "40", "--hits", "back"}))};
    for(std::size_t i = 0; i < 4; ++i)
    {
        EXPECT_EQ(keys_of(answers.lines[i]), "query hits count seconds complete indexed");
        EXPECT_EQ(answers.lines[i]["query"], i);
        EXPECT_GT(answers.lines[i]["count"], 0);
        EXPECT_EQ(without(answers.lines[i], {"query", "seconds", "indexed"}), expected[i]) << i;
    }
}

TEST(SelectQueries, OptionsBesideTheFileAreTheDefaultsOfItsLines)
{
    std::string const pixel = "{" + ViewKeys + ",\"pixel\":[640,330]";
    Answers const answers = ask(pixel + "}\n" + pixel + ",\"radius\":2,\"hits\":\"front\"}\n{" +
                                    ViewKeys + ",\"rect\":[620,310,660,350]}\n",
                                {"--radius", "20", "--hits", "all", "--json"});
    EXPECT_EQ(answers.status, 0) << answers.err;
    ASSERT_EQ(answers.lines.size(), 3u);
    Json const wide = single(view_and({"--pixel", "640,330", "--radius", "20", "--hits", "all"}));
    EXPECT_EQ(answers.lines[0]["hits"], wide["hits"]);
    EXPECT_EQ(answers.lines[1]["hits"], single(view_and({"--pixel", "640,330"}))["hits"]);
    EXPECT_EQ(answers.lines[2]["hits"], wide["hits"]);
}

TEST(SelectQueries, LassosEnclosuresAndViewsWithoutPerspectiveAreAnsweredToo)
{
    std::string const flat =
        R"("from":[7.5,3.2,9.5],"at":[0,1,0],"up":[0,1,0],"ortho":9,"size":[1280,720])";
    Words const flatWords = {"--from", "7.5,3.2,9.5", "--at", "0,1,0",  "--up",
                             "0,1,0",  "--ortho",     "9",    "--size", "1280x720"};
    Answers const answers =
        ask("{" + ViewKeys + ",\"lasso\":[420,300,760,310,500,460.5],\"hits\":\"all\"}\n{" + flat +
                ",\"rect\":[420,300,760,460],\"enclosed\":false}\n{" + flat +
                ",\"lasso\":[420,300,760,310,500,460.5],\"plane\":\"far\"}\n",
            {"--enclosed"});
    EXPECT_EQ(answers.status, 0) << answers.err;
    ASSERT_EQ(answers.lines.size(), 3u);
    Words second = flatWords;
    second.insert(second.end(), {"--rect", "420,300,760,460"});
    Words third = flatWords;
    third.insert(third.end(),
                 {"--lasso", "420,300,760,310,500,460.5", "--plane", "far", "--enclosed"});
    Json const expected[] = {
        single(view_and({"--lasso", "420,300,760,310,500,460.5", "--hits", "all", "--enclosed"})),
        single(second), single(third)};
    for(std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(without(answers.lines[i], {"query", "seconds", "indexed"}), expected[i]) << i;
    EXPECT_GT(answers.lines[1]["count"], 0);
    EXPECT_EQ(answers.lines[0]["indexed"], false);
}

TEST(SelectQueries, ABadLineIsSaidAndTheRestIsAnswered)
{
    Answers const answers = ask("\n{\"box\":[[-1,0,-1],[1,1,1]]}\r\n \t\r\nnonsense\n"
                                "{\"box\":[[1,0,-1],[0,1,1]]}\n{\"fast\":true,\"\\u001b\":1}\n"
                                "{\"box\":[[-1,0,-1],[1,1,1]]}");
    EXPECT_EQ(answers.status, 1);
    EXPECT_EQ(answers.err, "");
    ASSERT_EQ(answers.lines.size(), 5u);
    for(std::size_t i = 0; i < 5; ++i)
        EXPECT_EQ(answers.lines[i]["query"], i);
    EXPECT_EQ(keys_of(answers.lines[1]), "query error");
    EXPECT_EQ(answers.lines[1]["error"], "no JSON object");
    EXPECT_EQ(answers.lines[2]["error"], "--box: 1,0,-1 is not the smaller corner");
    EXPECT_EQ(answers.lines[3]["error"], "unknown key \x1b");
    EXPECT_EQ(answers.lines[4]["hits"], answers.lines[0]["hits"]);
    EXPECT_GT(answers.lines[4]["count"], 0);
}

TEST(SelectQueries, TheErrorOfALineIsThatOfTheCommandLine)
{
    std::pair<std::string, Words> const cases[] = {
        {R"({"box":[[1,0,-1],[0,1,1]]})", {"--box", "1,0,-1", "0,1,1"}},
        {R"({"box":[[0,0,0],[1,1,1]],"kinds":"quads"})",
         {"--box", "0,0,0", "1,1,1", "--kinds", "quads"}},
        {R"({"box":[[0,0,0],[1,1,1]],"plane":"up"})", {"--box", "0,0,0", "1,1,1", "--plane", "up"}},
        {R"({"box":[[0,0,0],[1,1,1]],"radius":2})", {"--box", "0,0,0", "1,1,1", "--radius", "2"}},
        {R"({"at":[0,1,0]})", {"--at", "0,1,0"}},
        {"{" + ViewKeys + "}", ViewWords},
        {"{" + ViewKeys + R"(,"pixel":[1,1],"radius":0})",
         view_and({"--pixel", "1,1", "--radius", "0"})},
        {"{" + ViewKeys + R"(,"lasso":[1,2,3]})", view_and({"--lasso", "1,2,3"})},
        {"{" + ViewKeys + R"(,"lasso":[1,2,3,4],"plane":"left"})",
         view_and({"--lasso", "1,2,3,4", "--plane", "left"})},
        {"{" + ViewKeys + R"(,"lasso":[1,2,3,4],"rect":[1,2,3,4]})",
         view_and({"--lasso", "1,2,3,4", "--rect", "1,2,3,4"})},
        {"{" + ViewKeys + R"(,"lasso":[1,2,3,4],"pixel":[1,2]})",
         view_and({"--lasso", "1,2,3,4", "--pixel", "1,2"})},
        {"{" + ViewKeys + R"(,"ortho":4,"pixel":[1,2]})",
         view_and({"--ortho", "4", "--pixel", "1,2"})},
        {R"({"lasso":[1,2,3,4]})", {"--lasso", "1,2,3,4"}},
        {R"({"ortho":4})", {"--ortho", "4"}},
        {R"({"from":[7,3,9],"at":[0,1,0],"up":[0,1,0],"size":[9,9],"pixel":[1,1]})",
         {"--from", "7,3,9", "--at", "0,1,0", "--up", "0,1,0", "--size", "9x9", "--pixel", "1,1"}},
        {R"({"from":[7,3,9],"at":[0,1,0],"up":[0,1,0],"ortho":0,"size":[9,9],"pixel":[1,1]})",
         {"--from", "7,3,9", "--at", "0,1,0", "--up", "0,1,0", "--ortho", "0", "--size", "9x9",
          "--pixel", "1,1"}},
        {"{}", {}}};
    for(auto const &[line, words] : cases)
    {
        Words all = {"select", pavilion()};
        all.insert(all.end(), words.begin(), words.end());
        Outcome const outcome = run_program(all);
        EXPECT_EQ(outcome.status, 2) << line;
        Answers const answers = ask(line);
        ASSERT_EQ(answers.lines.size(), 1u) << line;
        EXPECT_EQ("tolvanite: " + answers.lines[0]["error"].get<std::string>() + "\n", outcome.err);
    }
}

TEST(SelectQueries, WithoutTheIndexTheAnswersAreTheSame)
{
    std::string queries;
    for(int x = 200; x < 1100; x += 50)
        queries +=
            "{" + ViewKeys + ",\"pixel\":[" + std::to_string(x) + ",330],\"hits\":\"all\"}\n";
    queries += queries;
    Answers const with = ask(queries);
    Answers const plain = ask(queries, {"--no-index"});
    ASSERT_EQ(with.lines.size(), 36u);
    ASSERT_EQ(plain.lines.size(), with.lines.size());
    std::size_t indexed = 0;
    for(std::size_t i = 0; i < with.lines.size(); ++i)
    {
        EXPECT_EQ(plain.lines[i]["indexed"], false);
        indexed += with.lines[i]["indexed"] == true ? 1 : 0;
        EXPECT_EQ(without(with.lines[i], {"seconds", "indexed"}),
                  without(plain.lines[i], {"seconds", "indexed"}));
    }
    EXPECT_GT(indexed, 0u);
}

TEST(SelectQueries, AnEmptyFileHasNoAnswers)
{
    for(char const *const content : {"", "\n", "\n \r\n\n"})
    {
        Answers const answers = ask(content);
        EXPECT_EQ(answers.status, 0);
        EXPECT_EQ(answers.lines.size(), 0u);
        EXPECT_EQ(answers.err, "");
    }
}

TEST(SelectQueries, AFileThatIsNotThereIsMisuseBeforeTheSceneIsRead)
{
    TextFile const no_scene("scene.obj", "nothing");
    Outcome const outcome = run_program({"select", no_scene.path(), "--queries", "/missing/file"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err,
              "tolvanite: --queries: cannot read /missing/file: No such file or directory\n");
}

TEST(SelectQueries, ASceneThatCannotBeReadGivesNoLine)
{
    TextFile const no_scene("scene.osb", "nothing");
    TextFile const queries("queries", "{\"box\":[[0,0,0],[1,1,1]]}\n");
    Outcome const outcome = run_program({"select", no_scene.path(), "--queries", queries.path()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
}

TEST(SelectQueries, AVolumeBesideTheFileIsMisuse)
{
    for(Words const &volume : {Words{"--box", "0,0,0", "1,1,1"}, Words{"--at", "0,0,0"},
                               Words{"--fov", "45"}, Words{"--pixel", "1,1"}, ViewWords})
        EXPECT_EQ(ask("{}", volume).status, 2) << volume[0];
    EXPECT_EQ(ask("{}", {"--radius", "0"}).status, 2);
    EXPECT_EQ(ask("{}", {"--hits", "none"}).status, 2);
}

/// The program with pipes for its standard input and output.
class Conversation
{
  public:
    Conversation()
    {
        int in[2];
        int out[2];
        EXPECT_TRUE(pipe2(in, O_CLOEXEC) == 0 && pipe2(out, O_CLOEXEC) == 0);
        std::string const model = pavilion();
        _process = fork();
        if(_process == 0)
        {
            dup2(in[0], STDIN_FILENO);
            dup2(out[1], STDOUT_FILENO);
            execl(TOOL_PROGRAM, TOOL_PROGRAM, "select", model.c_str(), "--queries", "-", nullptr);
            _exit(127);
        }
        close(in[0]);
        close(out[1]);
        _in = in[1];
        _out = out[0];
    }
    Conversation(Conversation const &) = delete;
    Conversation &operator=(Conversation const &) = delete;
    ~Conversation()
    {
        close(_out);
        if(_in >= 0)
            end();
    }

    std::string ask(std::string const &line)
    {
        EXPECT_EQ(write(_in, line.data(), line.size()), static_cast<ssize_t>(line.size()));
        std::string answer;
        char c = 0;
        while(read(_out, &c, 1) == 1 && c != '\n')
            answer += c;
        return answer;
    }
    int end()
    {
        close(_in);
        _in = -1;
        int status = -1;
        waitpid(_process, &status, 0);
        return status;
    }

  private:
    pid_t _process = -1;
    int _in = -1;
    int _out = -1;
};

TEST(SelectQueries, ALineIsAnsweredBeforeTheNextOneIsThere)
{
    Conversation conversation;
    for(int i = 0; i < 3; ++i)
    {
        Json const answer = Json::parse(conversation.ask("{\"box\":[[-1,0,-1],[1,1,1]]}\n"));
        EXPECT_EQ(answer["query"], i);
        EXPECT_GT(answer["count"], 0);
    }
    EXPECT_EQ(conversation.end(), 0);
}

TEST(Select, IndexedSaysWhetherAnIndexHasAnswered)
{
    Words const words = {"select", pavilion(), "--json", "--box", "-1,0,-1", "1,1,1"};
    Json const result = Json::parse(run_program(words).out);
    EXPECT_EQ(keys_of(result), "file hits count seconds complete indexed");
    Words plain = words;
    plain.push_back("--no-index");
    EXPECT_EQ(Json::parse(run_program(plain).out)["indexed"], false);
}
} // namespace
} // namespace Tool::Test
