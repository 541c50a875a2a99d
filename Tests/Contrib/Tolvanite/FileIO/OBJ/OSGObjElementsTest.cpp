#include "OSGObjElements.h"

#include <random>

#include <gtest/gtest.h>

using namespace OSG;

namespace
{
ObjElementMap filled_map()
{
    ObjElementMap elements;
    fill_element_map(elements);
    return elements;
}

ObjElement by_map(ObjElementMap const &elements, std::string const &word)
{
    auto const found = elements.find(word);
    return found != elements.end() ? found->second : ObjElement::Unknown;
}
} // namespace

TEST(ObjElements, TheSceneTableHasEveryWordWithItsClass)
{
    std::map<std::string, int> const expected = {{"", 0},  {"v", 1},  {"vt", 2},     {"vn", 3},
                                                 {"f", 4}, {"fo", 4}, {"mtllib", 5}, {"usemtl", 6},
                                                 {"g", 7}, {"s", 8},  {"o", 9}};
    std::map<std::string, int> actual;
    for(auto const &[word, element] : filled_map())
        actual[word] = static_cast<int>(element);
    EXPECT_EQ(actual, expected);
}

TEST(ObjElements, TheLibraryTableHasEveryWordWithItsClass)
{
    std::map<std::string, int> const expected = {
        {"", 0},       {"newmtl", 1},     {"Kd", 2},      {"Ka", 3},      {"Ks", 4},
        {"Ns", 5},     {"illum", 6},      {"Tr", 7},      {"d", 8},       {"Ni", 9},
        {"Tf", 10},    {"sharpness", 11}, {"map_Kd", 12}, {"map_Ka", 13}, {"map_Ks", 14},
        {"map_d", 15}, {"decal", 16},     {"bump", 17},   {"refl", 18}};
    MtlElementMap elements;
    fill_element_map(elements);
    std::map<std::string, int> actual;
    for(auto const &[word, element] : elements)
        actual[word] = static_cast<int>(element);
    EXPECT_EQ(actual, expected);
}

TEST(ObjElements, ATableThatIsNotEmptyStaysAsItIs)
{
    ObjElementMap elements = {{"x", ObjElement::Face}};
    fill_element_map(elements);
    EXPECT_EQ(elements.size(), 1u);
}

TEST(ObjElements, LibraryWordsAreCaseSensitive)
{
    MtlElementMap elements;
    fill_element_map(elements);
    EXPECT_EQ(find_element(elements, "Kd"), MtlElement::Diffuse);
    EXPECT_EQ(find_element(elements, "kd"), MtlElement::Unknown);
}

TEST(ObjElementFinder, AnswersLikeTheTableForEveryShortWord)
{
    ObjElementMap const elements = filled_map();
    ObjElementFinder const finder(elements);
    for(int first = 0; first < 256; ++first)
    {
        std::string const one(1, static_cast<char>(first));
        ASSERT_EQ(finder.find(one), by_map(elements, one));
        for(int second = 0; second < 256; ++second)
        {
            std::string const two = one + static_cast<char>(second);
            ASSERT_EQ(finder.find(two), by_map(elements, two)) << two;
        }
    }
}

TEST(ObjElementFinder, AnswersLikeTheTableForLongerWords)
{
    ObjElementMap const elements = filled_map();
    ObjElementFinder const finder(elements);
    for(std::string const word :
        {"", "mtllib", "usemtl", "usemtlx", "mtl", "v\0t", "vtx", "MTLLIB"})
        EXPECT_EQ(finder.find(word), by_map(elements, word)) << word;
}

TEST(ObjElementFinder, ATableOfManyShortWordsIsAnsweredInFull)
{
    ObjElementMap elements;
    for(char first = 'a'; first <= 'z'; ++first)
    {
        for(char second = 'a'; second <= 'z'; ++second)
            elements[{first, second}] = static_cast<ObjElement>((first * 5 + second) % 10);
    }
    ObjElementFinder const finder(elements);
    for(auto const &[word, element] : elements)
        EXPECT_EQ(finder.find(word), element) << word;
}
