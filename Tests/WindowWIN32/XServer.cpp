#include "XServer.h"

#include <algorithm>
#include <csignal>
#include <cstdint>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "FileContent.h"

namespace OSG::Test
{
namespace
{
// In the child: the program with its words, or the end.
[[noreturn]] void become(std::vector<std::string> const &words)
{
    std::vector<char *> arguments;
    arguments.reserve(words.size() + 1);
    for(std::string const &word : words)
        arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    execvp(arguments.front(), arguments.data());
    _exit(127);
}

std::string read_line(int file)
{
    std::string line;
    for(char c = 0; read(file, &c, 1) == 1 && c != '\n';)
        line.push_back(c);
    return line;
}

std::uint32_t word_at(std::string const &bytes, std::size_t index)
{
    std::uint32_t value = 0; // the header of the file is big-endian
    for(std::size_t i = 0; i < 4; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes.at(4 * index + i));
    return value;
}
} // namespace

XServer::XServer()
{
    int ends[2];
    if(pipe(ends) != 0)
        return;
    std::vector<std::string> const words = {"Xvfb",
                                            "-displayfd",
                                            std::to_string(ends[1]),
                                            "-screen",
                                            "0",
                                            "800x600x24",
                                            "-nolisten",
                                            "tcp",
                                            "-noreset",
                                            "-fbdir",
                                            _folder.makeFolder("screen")};
    _process = fork();
    if(_process == 0)
        become(words);
    close(ends[1]);
    std::string const number = read_line(ends[0]); // waits until the server can be asked
    close(ends[0]);
    if(!number.empty())
        _display = ":" + number;
}

XServer::~XServer() { kill(); }

void XServer::kill()
{
    if(_process <= 0)
        return;
    // Where it can, the server takes its lock and its socket away.
    ::kill(_process, SIGTERM);
    waitpid(_process, nullptr, 0);
    _process = -1;
}

bool XServer::act(std::vector<std::string> words) const
{
    words.insert(words.begin(), "xdotool");
    pid_t const process = fork();
    if(process == 0)
    {
        setenv("DISPLAY", _display.c_str(), 1);
        become(words);
    }
    int status = 1;
    return waitpid(process, &status, 0) == process && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

int XServer::brightest(int x, int y, int side) const
{
    // An X window dump: a header of 25 words and a name, a table of colours, the pixels.
    std::string const dump = content_of(_folder.path("screen/Xvfb_screen0"));
    constexpr std::size_t BytesPerLineWord = 12;
    constexpr std::size_t ColourCountWord = 19;
    constexpr std::size_t BytesPerColour = 12;
    std::size_t const pixels = word_at(dump, 0) + word_at(dump, ColourCountWord) * BytesPerColour;
    std::size_t const line = word_at(dump, BytesPerLineWord);
    int result = 0;
    for(int row = y; row < y + side; ++row)
    {
        std::size_t const begin = pixels + static_cast<std::size_t>(row) * line;
        for(int byte = 0; byte < 4 * side; ++byte)
        {
            if(byte % 4 != 3) // not a colour
                result =
                    std::max<int>(result, static_cast<unsigned char>(dump.at(
                                              begin + static_cast<std::size_t>(4 * x + byte))));
        }
    }
    return result;
}
} // namespace OSG::Test
