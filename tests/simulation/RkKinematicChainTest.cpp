#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

#include "RkSimulationTestSupport.h"

namespace {

Eigen::Matrix3d rot(double angle, const Eigen::Vector3d& axis) {
  return Eigen::AngleAxisd(angle, axis).toRotationMatrix();
}

// The maker's published standard DH table of the UR5e; its base frame is base_link turned by pi about z.
std::unique_ptr<RkKinematicChain> ur5eFromDh() {
  const double a[] = {0, -0.425, -0.3922, 0, 0, 0};
  const double d[] = {0.1625, 0, 0, 0.1333, 0.0997, 0.0996};
  const double alpha[] = {M_PI / 2, 0, 0, M_PI / 2, -M_PI / 2, 0};
  std::vector<RkKinematicChain::DhJoint> table(6);
  for (int i = 0; i < 6; ++i) {
    table[i].a = a[i];
    table[i].d = d[i];
    table[i].alpha = alpha[i];
  }
  Eigen::Isometry3d base = Eigen::Isometry3d::Identity();
  base.linear() = rot(M_PI, Eigen::Vector3d::UnitZ());
  std::string error;
  auto chain = RkKinematicChain::fromDh(table, base, Eigen::Isometry3d::Identity(), "ur5e-dh", error);
  EXPECT_TRUE(chain) << error;
  return chain;
}

}  // namespace

TEST(RkKinematicChain, ReferencePlacementsAndLimitsOfTheExampleRobots) {
  auto ur5e = loadUr5e();
  auto panda = loadPanda();
  ASSERT_TRUE(ur5e && panda);
  Eigen::Isometry3d tip;
  ASSERT_TRUE(ur5e->tipPlacement(Eigen::VectorXd::Zero(6), tip));
  EXPECT_LT((tip.translation() - Eigen::Vector3d(0.8172, 0.2329, 0.0628)).norm(), 1e-9);
  Eigen::Matrix3d rows;
  rows << -1, 0, 0, 0, 0, 1, 0, 1, 0;
  EXPECT_LT((tip.linear() - rows).norm(), 1e-9);
  ASSERT_TRUE(panda->tipPlacement(Eigen::VectorXd::Zero(7), tip));
  EXPECT_LT((tip.translation() - Eigen::Vector3d(0.088, 0, 0.8226)).norm(), 1e-9);
  EXPECT_LT(
      (tip.linear() - rot(M_PI, Eigen::Vector3d::UnitX()) * rot(-M_PI / 4, Eigen::Vector3d::UnitZ())).norm(),
      1e-9);
  // Limits reach the right joints (the fixed joints before the first movable one shift no index).
  EXPECT_EQ(ur5e->upperLimits()(2), M_PI);
  EXPECT_EQ(ur5e->velocityLimits()(0), M_PI);
  EXPECT_EQ(panda->lowerLimits()(3), -3.0718);
  EXPECT_EQ(panda->upperLimits()(5), 3.7525);
  EXPECT_EQ(panda->velocityLimits()(4), 2.61);
}

TEST(RkKinematicChain, Ur5eDescriptionEqualsThePublishedDhChain) {
  auto urdf = loadUr5e();
  auto dh = ur5eFromDh();
  ASSERT_TRUE(urdf && dh);
  std::mt19937 rng(20240611);
  double worstPosition = 0, worstAngle = 0;
  for (int k = 0; k < 1000; ++k) {
    const Eigen::VectorXd q = randomJoints(*urdf, rng);
    Eigen::Isometry3d a, b;
    ASSERT_TRUE(urdf->tipPlacement(q, a));
    ASSERT_TRUE(dh->tipPlacement(q, b));
    worstPosition = std::max(worstPosition, (a.translation() - b.translation()).norm());
    worstAngle = std::max(worstAngle, Eigen::AngleAxisd(a.linear().transpose() * b.linear()).angle());
  }
  EXPECT_LT(worstPosition, 1e-9);
  EXPECT_LT(worstAngle, 1e-9);
}

// The KDL solvers, the single pass and finite differences of placements must all agree, on every link of
// URDF chains (revolute, prismatic, fixed joints) and a DH chain.
TEST(RkKinematicChain, PlacementsAndJacobiansAgreeAcrossMethods) {
  std::string error;
  auto finger =
      RkKinematicChain::fromUrdfFile(robotPath("panda.urdf"), "panda_link0", "panda_leftfinger", error);
  auto ur5e = loadUr5e();
  auto dh = ur5eFromDh();
  ASSERT_TRUE(ur5e && dh && finger) << error;
  std::mt19937 rng(7);
  const double h = 1e-6;
  for (const RkKinematicChain* chain : {ur5e.get(), dh.get(), finger.get()}) {
    const int n = chain->jointCount();
    Eigen::MatrixXd expected(6, n), actual(6, n);
    for (int k = 0; k < 10; ++k) {
      const Eigen::VectorXd q = randomJoints(*chain, rng, 2 * h);
      for (int link = 0; link < static_cast<int>(chain->linkNames().size()); ++link) {
        Eigen::Isometry3d a, b, plus, minus;
        ASSERT_TRUE(chain->linkPlacement(q, link, a));
        ASSERT_TRUE(chain->linkJacobian(q, link, expected));
        ASSERT_TRUE(chain->linkPlacementAndJacobian(q, link, b, actual));
        EXPECT_LT((a.matrix() - b.matrix()).norm(), 1e-12) << chain->linkNames()[link];
        EXPECT_LT((expected - actual).norm(), 1e-12) << chain->linkNames()[link];
        for (int j = 0; j < n; ++j) {
          ASSERT_TRUE(chain->linkPlacement(q + h * Eigen::VectorXd::Unit(n, j), link, plus));
          ASSERT_TRUE(chain->linkPlacement(q - h * Eigen::VectorXd::Unit(n, j), link, minus));
          const Eigen::AngleAxisd turn(plus.linear() * minus.linear().transpose());
          Eigen::Matrix<double, 6, 1> column;
          column << (plus.translation() - minus.translation()) / (2 * h),
              turn.angle() * turn.axis() / (2 * h);
          EXPECT_LT((expected.col(j) - column).norm(), 1e-6) << chain->linkNames()[link] << " joint " << j;
        }
      }
    }
  }
  // For the DH chain, the frame of the last joint is DH frame 6, here the tool.
  Eigen::Isometry3d frame, tip;
  ASSERT_TRUE(dh->dhFrame(Eigen::VectorXd::Constant(6, 0.3), 5, frame));
  ASSERT_TRUE(dh->tipPlacement(Eigen::VectorXd::Constant(6, 0.3), tip));
  EXPECT_TRUE(frame.isApprox(tip, 1e-12));
  // Wrong sizes and links are refused.
  EXPECT_FALSE(ur5e->tipPlacement(Eigen::VectorXd::Zero(5), tip));
  EXPECT_FALSE(ur5e->linkPlacement(Eigen::VectorXd::Zero(6), "panda_link0", tip));
  Eigen::MatrixXd right(6, 6), wrong(3, 6);
  EXPECT_FALSE(ur5e->linkPlacementAndJacobian(Eigen::VectorXd::Zero(6), 10, tip, right));
  EXPECT_FALSE(ur5e->tipJacobian(Eigen::VectorXd::Zero(6), wrong));
}

TEST(RkKinematicChain, DefaultsSideBranchesAndJointKinds) {
  const char* arm = R"(<robot name="arm">
    <link name="a"/><link name="b"/><link name="c"/><link name="side"/>
    <joint name="ab" type="continuous"><parent link="a"/><child link="b"/><axis xyz="0 0 2"/>
      <origin xyz="0 0 1"/></joint>
    <joint name="bc" type="prismatic"><parent link="b"/><child link="c"/><axis xyz="1 0 0"/>
      <limit lower="0" upper="0.5" velocity="0" effort="1"/></joint>
    <joint name="aside" type="fixed"><parent link="a"/><child link="side"/></joint>
  </robot>)";
  std::string error;
  // Default base and tip: the root and the deepest link; the side branch is left out.
  auto chain = RkKinematicChain::fromUrdfString(arm, "arm.urdf", "", "", error);
  ASSERT_TRUE(chain) << error;
  EXPECT_EQ(chain->linkNames(), (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(chain->jointTypes().front(), RkKinematicChain::JointType::Continuous);
  EXPECT_TRUE(std::isinf(chain->lowerLimits()(0)) && std::isinf(chain->upperLimits()(0)));
  EXPECT_TRUE(std::isinf(chain->velocityLimits()(1)));  // zero in the file: not bounded
  // The axis is normalised; the prismatic joint slides along x of the turned link.
  Eigen::Isometry3d tip;
  ASSERT_TRUE(chain->tipPlacement(Eigen::Vector2d(M_PI / 2, 0.25), tip));
  EXPECT_LT((tip.translation() - Eigen::Vector3d(0, 0.25, 1)).norm(), 1e-12);

  // The UR5e's default tip is tool0; the Panda's is ambiguous (TCP and fingers equally deep) and refused.
  chain = RkKinematicChain::fromUrdfFile(robotPath("ur5e.urdf"), "", "", error);
  ASSERT_TRUE(chain) << error;
  EXPECT_EQ(chain->baseLink() + " " + chain->tipLink(), "base_link tool0");
  EXPECT_FALSE(RkKinematicChain::fromUrdfFile(robotPath("panda.urdf"), "", "", error));
  EXPECT_NE(error.find("panda_hand_tcp"), std::string::npos) << error;
  // A chain may start above the root's first joint.
  chain = RkKinematicChain::fromUrdfFile(robotPath("panda.urdf"), "panda_link2", "panda_hand", error);
  ASSERT_TRUE(chain) << error;
  EXPECT_EQ(chain->jointNames().front(), "panda_joint3");
}

TEST(RkKinematicChain, LoadFailuresGiveOneLineNamingTheFileAndTheProblem) {
  // Only the files written here are removed afterwards: the robots may live under the temporary directory
  // too.
  std::vector<std::string> written;
  const auto write = [&written](const std::string& name, const std::string& text) {
    const std::string path = testing::TempDir() + name;
    std::ofstream(path) << text;
    written.push_back(path);
    return path;
  };
  // Links a, b, c with the given joint from a to b, and a fixed one from b to c.
  const auto robot = [](const std::string& joint) {
    return "<robot name=\"r\"><link name=\"a\"/><link name=\"b\"/><link name=\"c\"/>" + joint +
           "<joint name=\"bc\" type=\"fixed\"><parent link=\"b\"/><child link=\"c\"/></joint></robot>";
  };
  const std::string missing = testing::TempDir() + "no-such-robot.urdf";
  std::remove(missing.c_str());
  const std::string ur5e = robotPath("ur5e.urdf");
  struct Case {
    std::string path, base, tip, problem;
  };
  const std::vector<Case> cases{
      {missing, "", "", "no such file"},
      {testing::TempDir(), "", "", "not a regular file"},
      {write("empty.urdf", ""), "", "", "empty"},
      {write("broken.urdf", "<robot name=\"x\"><link name=\"a\"></robot"), "", "", "not a valid URDF"},
      {write("floating.urdf",
             robot(R"(<joint name="free" type="floating"><parent link="a"/><child link="b"/></joint>)")),
       "", "", "'free' is neither"},
      {write("mimic.urdf", robot(R"(<joint name="j" type="continuous"><parent link="a"/><child link="b"/>
         <mimic joint="bc"/></joint>)")),
       "", "", "mimics"},
      {write("twoparents.urdf",
             robot(R"(<joint name="j" type="continuous"><parent link="a"/><child link="b"/></joint>
         <joint name="k" type="continuous"><parent link="a"/><child link="c"/></joint>)")),
       "", "", "child of more than one joint"},
      {write("fixed.urdf",
             robot(R"(<joint name="j" type="fixed"><parent link="a"/><child link="b"/></joint>)")),
       "", "", "no movable joint"},
      {ur5e, "base_link", "tool9", "no link named 'tool9'"},
      {ur5e, "base_lnk", "tool0", "no link named 'base_lnk'"},
      {ur5e, "tool0", "base_link", "'tool0' is not an ancestor of 'base_link'"},
  };
  for (const Case& c : cases) {
    std::string error;
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    auto chain = RkKinematicChain::fromUrdfFile(c.path, c.base, c.tip, error);
    const std::string printed =
        testing::internal::GetCapturedStderr() + testing::internal::GetCapturedStdout();
    EXPECT_FALSE(chain) << c.path;
    EXPECT_EQ(error.rfind(c.path + ": ", 0), 0u) << error;
    EXPECT_NE(error.find(c.problem), std::string::npos) << error;
    EXPECT_EQ(error.find('\n'), std::string::npos) << error;
    EXPECT_EQ(printed, "") << "loading " << c.path << " printed";
  }
  for (const std::string& path : written) std::remove(path.c_str());
  // DH tables are checked as well.
  std::string error;
  std::vector<RkKinematicChain::DhJoint> table(2);
  table[1].a = std::nan("");
  EXPECT_FALSE(RkKinematicChain::fromDh(table, Eigen::Isometry3d::Identity(), Eigen::Isometry3d::Identity(),
                                        "t", error));
  EXPECT_EQ(error, "t: joint 'joint2' has a non-finite DH parameter");
}
