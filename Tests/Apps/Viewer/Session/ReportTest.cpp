#include "Report.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "FileContent.h"
#include "TempFolder.h"

using namespace OSG::Test;
using Json = nlohmann::ordered_json;

namespace
{
struct ReportTest : testing::Test
{
    Json lineOf(Viewer::Saved const &saved)
    {
        Viewer::Report report;
        EXPECT_TRUE(report.open(folder.path("report.jsonl")));
        report.saved(saved);
        return Json::parse(content_of(folder.path("report.jsonl")));
    }

    TempFolder folder;
};

TEST_F(ReportTest, ASavedFileThatNoOperationChangedHasAsManyNodesBeforeAsAfter)
{
    Json const line = lineOf({"a.obj", "b.osb", 7, 0.5, true});
    EXPECT_EQ(line.dump(), R"({"event":"saved","in":"a.obj","out":"b.osb","nodesBefore":7,)"
                           R"("nodesAfter":7,"seconds":0.5,"complete":true})");
}

TEST_F(ReportTest, OperationsAreToldInTheirOrderWithTheNodesBeforeTheFirst)
{
    OSG::GraphOpAccount first;
    first.name = "Mrg";
    first.nodesBefore = 20;
    first.nodesAfter = 12;
    OSG::GraphOpAccount second;
    second.name = "GrpMerge";
    second.nodesBefore = 12;
    second.nodesAfter = 7;
    Json const line = lineOf({"a.obj", "b.osb", 7, 0.5, true, {first, second}});
    EXPECT_EQ(line["nodesBefore"], 20);
    EXPECT_EQ(line["nodesAfter"], 7);
    ASSERT_EQ(line["operations"].size(), 2u);
    EXPECT_EQ(line["operations"][0]["name"], "Mrg");
    EXPECT_EQ(line["operations"][1]["name"], "GrpMerge");
}

TEST_F(ReportTest, AFolderThatIsNotThereGivesNoReport)
{
    Viewer::Report report;
    EXPECT_FALSE(report.open(folder.path("gone/report.jsonl")));
    report.saved({}); // does nothing
    EXPECT_FALSE(report.isOpen());
}
} // namespace
