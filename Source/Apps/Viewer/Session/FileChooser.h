#pragma once

#include <optional>

#include "FolderList.h"

namespace Viewer
{
/// A dialog that asks for a file: a folder, those of its entries that fit what is typed, and one of
/// them at hand.
class FileChooser
{
  public:
    enum class Purpose : unsigned char
    {
        Open,
        Save
    };

    /// Begins anew: for Open in the folder of `file`, for Save with its name. An empty name stands
    /// for the current folder.
    void begin(Purpose purpose, std::string const &file);
    void end() { _isAsking = false; }
    bool isAsking() const { return _isAsking; }
    bool isForSaving() const { return _purpose == Purpose::Save; }

    // --- folders ---
    FolderList const &getList() const { return _list; }
    /// Reads a folder that is there. What was typed is forgotten when an open dialog goes on.
    void enter(std::filesystem::path const &folder);
    void enterParent();
    void enterHome();

    // --- what is typed ---
    /// For Open a part of the names that are shown; for Save the name of the file.
    void type(std::string const &text);
    std::string const &getTyped() const { return _typed; }
    /// What the user should know of it: that there is no such file, or under which name the scene
    /// will be saved. A line, with the bytes of the names; empty for nothing.
    std::string const &getNote() const { return _note; }
    /// Numbers of the entries that are shown.
    std::vector<std::size_t> const &getShown() const { return _shown; }

    // --- the one at hand ---
    /// Its number in getShown(); of none where nothing is shown.
    std::size_t getAtHand() const { return _atHand; }
    void take(std::size_t shown);
    void step(int by);

    /// Goes on with what is at hand or typed: enters a folder, or gives the file. A path that was
    /// typed comes first; `~` is the home. To save, a name without a suffix that is written gets
    /// that of a binary scene, and a file that is there has to be confirmed first.
    std::optional<std::string> accept();
    /// The file that would be replaced, while that is asked.
    std::optional<std::string> const &getReplaced() const { return _replaced; }
    std::optional<std::string> confirm();
    void decline() { _replaced.reset(); }

  private:
    std::filesystem::path typedPath() const;
    std::filesystem::path savedPath() const;
    std::string noteOnTyped() const;
    std::optional<std::string> acceptOpen();
    std::optional<std::string> acceptSave();
    std::optional<std::string> give(std::string const &file);

    Purpose _purpose = Purpose::Open;
    bool _isAsking = false;
    FolderList _list;
    std::string _typed;
    std::string _note;
    std::vector<std::size_t> _shown;
    std::size_t _atHand = 0;
    std::optional<std::string> _replaced;
};
} // namespace Viewer
