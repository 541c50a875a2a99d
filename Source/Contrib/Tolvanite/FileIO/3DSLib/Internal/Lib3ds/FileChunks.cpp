#include "Chunks.h"

namespace OSG::Lib3ds
{
namespace
{
void read_editor(Chunk chunk, File &file)
{
    chunk.readChildren(
        [&file](Chunk const &part)
        {
            if(part.kind() == MaterialChunk)
                read_material(part, file);
            else if(part.kind() == ObjectChunk)
                read_object(part, file);
            else
                return false;
            return true;
        });
}

void read_sections(Chunk chunk, File &file)
{
    chunk.readChildren(
        [&file](Chunk const &section)
        {
            if(section.kind() == EditorChunk)
                read_editor(section, file);
            else if(section.kind() == KeyframerChunk)
                read_keyframer(section, file);
            else
                return false;
            return true;
        });
}
} // namespace

void read_file(OutermostChunk &outermost, Messages const &messages, File &file)
{
    switch(outermost.kind())
    {
    case MainChunk:
    case LibraryChunk:
    case ProjectChunk:
        read_sections(outermost.read(), file);
        break;
    case EditorChunk:
        read_editor(outermost.read(), file);
        break;
    default:
        messages.fail("Chunk " + hex(outermost.kind()) + " does not begin a 3DS file");
    }
    link_nodes(file, messages);
    file.publish();
}
} // namespace OSG::Lib3ds
