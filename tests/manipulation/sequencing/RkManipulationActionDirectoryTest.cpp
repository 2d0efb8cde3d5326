// The action directory: how paths split, what add, lookup and remove do with them, listing orders, merging
// a directory under an existing name, and a filled directory's round trip.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/RkPrint.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "sequencing/RkManipulationActionDirectory.h"
#include "support/RkRoundTrip.h"

namespace {

typedef std::vector<std::string> Strings;

// A one-frame sequence told apart from others by where its frame goes.
RkManipulationSequence sequenceTo(RkReal x) {
  return timedSequence(1, 0.5, x);
}

::testing::AssertionResult holds(const RkManipulationActionDirectory& directory, const std::string& path,
                                 RkReal x) {
  const RkManipulationAction* found = directory.action(path);
  if (!found) return ::testing::AssertionFailure() << path << " not found";
  const RkManipulationSequence expected = sequenceTo(x);
  if (!found->equality(&expected)) return ::testing::AssertionFailure() << path << " holds another action";
  return ::testing::AssertionSuccess();
}

}  // namespace

TEST(RkManipulationActionDirectory, paths_split_into_the_key_to_descend_into_and_the_rest) {
  // Path, then "head|tail" as an action path and as a directory path; null where the path is refused.
  const char* const rows[][3] = {
      {"", nullptr, nullptr},         {"/x", nullptr, nullptr},     {"/x/", nullptr, nullptr},
      {"x/..", nullptr, nullptr},     {".", nullptr, "|./"},        {"pick", "|pick", nullptr},
      {"x/", nullptr, "|x/"},         {"x/.", nullptr, "|x/"},      {"a//", nullptr, "|a/"},
      {"a/b/c", "a/|b/c", nullptr},   {"a//b", "a/|b", nullptr},    {"a/b/", nullptr, "a/|b/"},
      {"a/b/c/", nullptr, "a/|b/c/"}, {"a/./b/", nullptr, "a/|b/"},
  };
  for (const auto& row : rows) {
    std::string head, tail;
    const bool action = RkManipulationActionDirectory::splitActionName(row[0], head, tail);
    EXPECT_EQ(action ? head + "|" + tail : "refused", row[1] ? row[1] : "refused") << row[0];
    const bool directory = RkManipulationActionDirectory::splitDirectoryName(row[0], head, tail);
    EXPECT_EQ(directory ? head + "|" + tail : "refused", row[2] ? row[2] : "refused") << row[0];
  }
}

TEST(RkManipulationActionDirectory, stores_finds_and_lists_actions_by_path_without_printing) {
  Rk::Print::Capture capture;
  RkManipulationActionDirectory directory;
  EXPECT_TRUE(directory.empty());
  EXPECT_TRUE(directory.add("pick", sequenceTo(0.1)));
  EXPECT_TRUE(directory.add("grasps/top/pinch", sequenceTo(0.2)));
  EXPECT_TRUE(directory.add("grasps/side", sequenceTo(0.3)));
  EXPECT_TRUE(directory.add("b/x", sequenceTo(0.4)));
  EXPECT_TRUE(directory.add("a/b/c", sequenceTo(0.5)));
  EXPECT_TRUE(directory.add("a/b/c", sequenceTo(0.6)));  // replaces
  for (const char* refused : {"", "/x", "x/..", "x/"}) {
    EXPECT_FALSE(directory.add(refused, sequenceTo(0.9))) << refused;
    EXPECT_EQ(directory.action(refused), nullptr) << refused;
  }
  EXPECT_FALSE(directory.add("x", RkManipulationActionDirectory()));

  EXPECT_TRUE(holds(directory, "pick", 0.1) && holds(directory, "grasps/top/pinch", 0.2));
  EXPECT_TRUE(holds(directory, "a/b/c", 0.6));
  EXPECT_TRUE(directory.action("a/b") == nullptr && directory.action("zz/c") == nullptr);
  EXPECT_TRUE(directory.subdirectory("a") == nullptr && directory.subdirectory("a/zz/") == nullptr);
  ASSERT_NE(directory.subdirectory("a/b/"), nullptr);
  EXPECT_TRUE(holds(*directory.subdirectory("a/b/"), "c", 0.6));

  // Key order; a directory before its contents; subdirectories' actions before a directory's own.
  EXPECT_EQ(directory.directoryListing(), (Strings{"a/", "a/b/", "b/", "grasps/", "grasps/top/"}));
  EXPECT_EQ(directory.actionListing(), (Strings{"a/b/c", "b/x", "grasps/top/pinch", "grasps/side", "pick"}));
  EXPECT_EQ(directory.subdirectoryListing(), (Strings{"a/", "b/", "grasps/"}));
  EXPECT_EQ(directory.subactionListing(), (Strings{"pick"}));
  EXPECT_TRUE(roundTrips(directory));

  // An action path removes only an action; a directory path removes the whole subtree.
  EXPECT_FALSE(directory.remove("a") || directory.remove("zz/q") || directory.remove(""));
  EXPECT_TRUE(directory.remove("grasps/side") && directory.remove("grasps/top/") && directory.remove("a/"));
  EXPECT_FALSE(directory.remove("grasps/side") || directory.remove("a/"));
  EXPECT_EQ(directory.actionListing(), (Strings{"b/x", "pick"}));
  EXPECT_EQ(directory.directoryListing(), (Strings{"b/", "grasps/"}));
  directory.clear();
  EXPECT_TRUE(directory.empty());
  EXPECT_TRUE(capture.lines().empty());
}

TEST(RkManipulationActionDirectory, adding_a_directory_under_an_existing_name_merges_its_actions) {
  RkManipulationActionDirectory library;
  library.add("grasps/pick", sequenceTo(0.1));
  library.add("grasps/place", sequenceTo(0.2));
  RkManipulationActionDirectory more;
  more.add("pick", sequenceTo(0.3));
  more.add("deep/nest", sequenceTo(0.4));
  more.createSubdirectory("empty/");

  EXPECT_TRUE(library.add("grasps/", more));
  EXPECT_TRUE(holds(library, "grasps/pick", 0.3) && holds(library, "grasps/place", 0.2));
  EXPECT_TRUE(holds(library, "grasps/deep/nest", 0.4));
  // A subdirectory holding no action is not reproduced.
  EXPECT_EQ(library.subdirectory("grasps/empty/"), nullptr);

  EXPECT_TRUE(library.add("x/y/", more));
  EXPECT_EQ(library.directoryListing(), (Strings{"grasps/", "grasps/deep/", "x/", "x/y/", "x/y/deep/"}));

  // A directory merged into a part of itself copies what it held when the merge began.
  const Strings before = library.actionListing();
  EXPECT_TRUE(library.add("copy/", library));
  Strings expected;
  for (const std::string& path : before) expected.push_back("copy/" + path);
  expected.insert(expected.end(), before.begin(), before.end());
  EXPECT_EQ(library.actionListing(), expected);
  EXPECT_TRUE(holds(library, "copy/grasps/deep/nest", 0.4));
  EXPECT_TRUE(library.add("grasps/", *library.subdirectory("grasps/")));
  EXPECT_TRUE(holds(library, "grasps/pick", 0.3));
}
