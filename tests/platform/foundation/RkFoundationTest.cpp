// Vector and orientation maths, transformations, the data map and the print facility.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "common/RkCoordinateSystemTransformation.h"
#include "common/RkDataMap.h"
#include "foundation/RkPrint.h"
#include "support/RkRoundTrip.h"

TEST(RkOrientation, interpolation_takes_the_short_way_and_dcm_rows_normalise) {
  const RkOrientation from = RkOrientation::fromAngleAxis(0.1, RkVector::zVector());
  const RkOrientation to = RkOrientation::fromAngleAxis(-0.1, RkVector::zVector());
  // The same rotation as to, given with the opposite sign: interpolation must still go through 0.
  const RkOrientation flipped(-to.w(), -to.x(), -to.y(), -to.z());
  EXPECT_TRUE(RkOrientation::interpolation(from, flipped, 0.5).approxEq(RkOrientation(), 1e-12));
  EXPECT_TRUE(RkOrientation::interpolation(from, to, 0.0).approxEq(from, 1e-12));
  EXPECT_TRUE(RkOrientation::interpolation(from, to, 1.0).approxEq(to, 1e-12));

  RkReal angle = 0.0;
  RkVector axis;
  RkOrientation::angleAxisBetween(from, to, angle, axis);
  EXPECT_NEAR(angle, 0.2, 1e-12);
  EXPECT_TRUE(axis.approxEq(-RkVector::zVector(), 1e-12));

  RkOrientation fromRows;
  fromRows.setFromDcmRows(RkVector(-2, 0, 0), RkVector(0, 0, 2), RkVector(0, 2, 0));
  EXPECT_NEAR(std::sqrt(fromRows.w() * fromRows.w() + fromRows.x() * fromRows.x() +
                        fromRows.y() * fromRows.y() + fromRows.z() * fromRows.z()),
              1.0, 1e-12);
  EXPECT_TRUE((fromRows * RkVector::yVector()).approxEq(RkVector::zVector(), 1e-12));
}

TEST(RkCoordinateSystemTransformation, composition_applies_the_right_operand_first_and_inverts) {
  std::mt19937 random(7);
  std::uniform_real_distribution<RkReal> uniform(-1.0, 1.0);
  for (int trial = 0; trial < 100; ++trial) {
    const RkCoordinateSystemTransformation a(
        RkVector(uniform(random), uniform(random), uniform(random)),
        RkOrientation(uniform(random), uniform(random), uniform(random), uniform(random)));
    const RkCoordinateSystemTransformation b(
        RkVector(uniform(random), uniform(random), uniform(random)),
        RkOrientation(uniform(random), uniform(random), uniform(random), uniform(random)));
    const RkVector point(uniform(random), uniform(random), uniform(random));
    EXPECT_TRUE(((a * b) * point).approxEq(a * (b * point), 1e-12));
    EXPECT_TRUE((a * a.inverse()).approxEq(RkCoordinateSystemTransformation(), 1e-12));
    EXPECT_TRUE(roundTrips(a));
  }
  const RkCoordinateSystemTransformation shifted(RkVector(1, 0, 0),
                                                 RkOrientation::fromAngleAxis(M_PI / 2, RkVector::zVector()));
  EXPECT_TRUE((shifted * RkVector::xVector()).approxEq(RkVector(1, 1, 0), 1e-12));
}

TEST(RkDataMap, lookup_reports_presence_and_leaves_the_value_when_absent) {
  RkDataMap map;
  map.setValue("x", 1.5);
  map.setValue("x", 2.5);
  RkReal value = -1.0;
  EXPECT_FALSE(map.lookup("y", value));
  EXPECT_EQ(value, -1.0);
  EXPECT_TRUE(map.lookup("x", value));
  EXPECT_EQ(value, 2.5);
  EXPECT_EQ(map.size(), 1u);
  EXPECT_TRUE(roundTrips(map));
}

TEST(RkPrint, verbosity_filters_and_capture_records_levels) {
  const int previous = Rk::Print::verbosity();
  std::vector<std::pair<int, std::string>> seen;
  Rk::Print::setSink(
      [](int level, const char*, const char* text, void* context) {
        static_cast<std::vector<std::pair<int, std::string>>*>(context)->emplace_back(level, text);
      },
      &seen);
  Rk::Print::setVerbosity(5);
  Rk::Print::write(7, "debug %d\n", 1);
  Rk::Print::write(4, "error %s %u\n", "x", 3u);
  // Texts too long for the buffer are cut visibly, keep their line feed and never split a character.
  Rk::Print::writeFrom("void f()", 5, "%s", std::string(2000, 'a').c_str());
  Rk::Print::write(4, "%s: %s\n", "long", std::string(3000, 'b').c_str());
  std::string accents;
  for (int i = 0; i < 700; ++i) accents += "\xC3\xA9";
  Rk::Print::write(4, "%s\n", accents.c_str());
  Rk::Print::setSink(nullptr, nullptr);
  Rk::Print::setVerbosity(previous);
  ASSERT_EQ(seen.size(), 4u);
  EXPECT_EQ(seen[0], std::make_pair(4, std::string("error x 3\n")));
  const std::string ellipsis = "\xE2\x80\xA6";
  EXPECT_EQ(seen[1].second, std::string(1019, 'a') + ellipsis);
  EXPECT_EQ(seen[2].second, "long: " + std::string(1013, 'b') + ellipsis + "\n");
  EXPECT_EQ(seen[3].second, accents.substr(0, 1018) + ellipsis + "\n");

  Rk::Print::Capture capture;
  Rk::Print::write(7, "seen at any verbosity\n");
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_EQ(capture.lines()[0].level, 7);
}
