#include "ContainerTable.h"

namespace OSG::Test
{
std::vector<ContainerFacts> const &container_table()
{
    char const *const attachments = "FieldContainer/Attachments";
    char const *const geometry =
        "Attachment that stores user information about some type of geometry.\n";
    static std::vector<ContainerFacts> const table = {
        {"CommandNameAttachment",
         "Attachment",
         "CommandNameAttachment",
         attachments,
         "Tolvanite attachment that stores a commad name string delivered on picking to the\n"
         "host application.\n",
         {{"Command", 5, "std::string", false, false, "The command identifier of the node.\n"}}},
        {"ForeignFileAttachment",
         "Attachment",
         "ForeignFileAttachment",
         attachments,
         "Tolvanite attachment that stores the repo handle and file information to the\n"
         "prototype nodes and its clones. These data are converted into string form for\n"
         "convenient handling by the attachment. This attachment is shared between the\n"
         "prototype node and its clone nodes.\n",
         {{"RepoHandle", 5, "std::string", false, false,
           "The unique identifier of the prototype node.\n"},
          {"FileName", 6, "std::string", false, false,
           "The fiilename of the original file used for importing the prototype\n"
           "node. This file might not be accessible in later program sessions.\n"}}},
        {"GeoToEntityAttachment",
         "Attachment",
         "GeoToEntityAttachment",
         attachments,
         geometry,
         {{"Geo", 5, "UInt64", true, false, "Index of a special entity information entry.\n"},
          {"Ent", 6, "UInt64", true, false, "Special entity information.\n"}}},
        {"HighlightMaterialAttachment",
         "Attachment",
         "HighlightMaterialAttachment",
         attachments,
         "Tolvanite attachment that stores the actual non highlight material on highlighting.\n",
         {{"material", 5, "ChunkMaterialPtr", false, false,
           "The material group material before highlighting took place.\n"}}},
        {"WalkConsoleAttachment",
         "Attachment",
         "WalkConsoleAttachment",
         attachments,
         geometry,
         {{"MarkIndex", 5, "Int32", false, false, "Index into the user defined viewpoint data.\n"},
          {"MarkLabel", 6, "std::string", true, false,
           "A user defined label for the marked viewpoint.\n"},
          {"MarkFrom", 7, "Pnt3f", true, false,
           "User requested viewpoint navigator 'from' data.\n"},
          {"MarkAt", 8, "Pnt3f", true, false, "User requested viewpoint navigator 'at' data.\n"},
          {"MarkUp", 9, "Vec3f", true, false, "User requested viewpoint navigator 'up' data.\n"},
          {"TickTime", 10, "UInt32", false, false,
           "Time in Milliseconds between consecutive recording events.\n"},
          {"TickCounter", 11, "UInt32", false, false, "Counts the current cardinality.\n"},
          {"RecordedIndex", 12, "Int32", false, false, "Index into the recorded viewpoint data.\n"},
          {"RecordedCardinality", 13, "UInt32", true, false,
           "Recorded viewpoint navigator 'from' data.\n"},
          {"RecordedFrom", 14, "Pnt3f", true, false, "Recorded viewpoint navigator 'from' data.\n"},
          {"RecordedAt", 15, "Pnt3f", true, false, "Recorded viewpoint navigator 'at' data.\n"},
          {"RecordedUp", 16, "Vec3f", true, false, "Recorded viewpoint navigator 'up' data.\n"},
          {"HomeAt", 17, "Pnt3f", false, false, "Recorded home 'at' data.\n"},
          {"HomeFrom", 18, "Pnt3f", false, false, "Recorded home 'from' data.\n"},
          {"HasHome", 19, "bool", false, false, "Has recorded home data.\n"}}},
        {"EnhPassiveViewport",
         "Viewport",
         "NULL",
         "Window/Viewport",
         "The EnhPassiveViewport does nothing itself, but expects OpenGL to be properly configured "
         "when draw() or render() are called.\n",
         {}},
        {"ConstSizeTransform",
         "Transform",
         "NULL",
         "NodeCores/Groups/Misc",
         "This transform renders its child tree at a constant size.\n",
         {{"distance", 5, "Real32", false, true,
           "The distance allows to adapt the render size of the child tree.\n"
           "Actually, this transformation calculates a scale value from the \n"
           "quotient of this distance value to the screen space diagonal of\n"
           "a unit cube.\n"},
          {"transform", 6, "Matrix", false, true,
           "The final render transform. It is calculated from the user\n"
           "provided matrix transform and the current measure value.\n"}}},
        {"ViewportTranslateChunk",
         "StateChunk",
         "NULL",
         "State/Base",
         "The color mask chunk contains the parameters that are specific for color writing.\n",
         {{"OffsetX", 6, "Int32", false, false, "Offset in x-direction.\n"},
          {"OffsetY", 7, "Int32", false, false, "Offset in y-direction.\n"}}},
    };
    return table;
}
} // namespace OSG::Test
