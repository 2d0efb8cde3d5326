#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

#include "RkSimulationTestSupport.h"

namespace {

Eigen::Matrix3d rotX(double a) {
  return Eigen::AngleAxisd(a, Eigen::Vector3d::UnitX()).toRotationMatrix();
}
Eigen::Matrix3d rotZ(double a) {
  return Eigen::AngleAxisd(a, Eigen::Vector3d::UnitZ()).toRotationMatrix();
}

double angleBetween(const Eigen::Matrix3d& a, const Eigen::Matrix3d& b) {
  return Eigen::AngleAxisd(a.transpose() * b).angle();
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
  base.linear() = rotZ(M_PI);
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
  ASSERT_EQ(ur5e->jointCount(), 6);
  ASSERT_EQ(panda->jointCount(), 7);

  Eigen::Isometry3d tip;
  ASSERT_TRUE(ur5e->tipPlacement(Eigen::VectorXd::Zero(6), tip));
  EXPECT_LT((tip.translation() - Eigen::Vector3d(0.8172, 0.2329, 0.0628)).norm(), 1e-9);
  Eigen::Matrix3d expected;
  expected << -1, 0, 0, 0, 0, 1, 0, 1, 0;
  EXPECT_LT((tip.linear() - expected).norm(), 1e-9);

  ASSERT_TRUE(panda->tipPlacement(Eigen::VectorXd::Zero(7), tip));
  EXPECT_LT((tip.translation() - Eigen::Vector3d(0.088, 0, 0.8226)).norm(), 1e-9);
  EXPECT_LT((tip.linear() - rotX(M_PI) * rotZ(-M_PI / 4)).norm(), 1e-9);

  // Limits come through from the descriptions, in joint order.
  EXPECT_DOUBLE_EQ(ur5e->upperLimits()(2), M_PI);
  EXPECT_DOUBLE_EQ(ur5e->lowerLimits()(0), -2 * M_PI);
  EXPECT_DOUBLE_EQ(ur5e->velocityLimits()(5), M_PI);
  EXPECT_DOUBLE_EQ(panda->lowerLimits()(3), -3.0718);
  EXPECT_DOUBLE_EQ(panda->upperLimits()(3), -0.0698);
  EXPECT_DOUBLE_EQ(panda->upperLimits()(5), 3.7525);
  EXPECT_DOUBLE_EQ(panda->velocityLimits()(3), 2.175);
  EXPECT_DOUBLE_EQ(panda->velocityLimits()(4), 2.61);
  EXPECT_EQ(panda->jointNames().front(), "panda_joint1");
  EXPECT_EQ(panda->linkNames().front(), "panda_link0");
  EXPECT_EQ(panda->linkNames().back(), "panda_hand_tcp");
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
    worstAngle = std::max(worstAngle, angleBetween(a.linear(), b.linear()));
  }
  EXPECT_LT(worstPosition, 1e-9);
  EXPECT_LT(worstAngle, 1e-9);
}

TEST(RkKinematicChain, JacobiansMatchFiniteDifferencesOfPlacements) {
  auto ur5e = loadUr5e();
  auto panda = loadPanda();
  auto dh = ur5eFromDh();
  ASSERT_TRUE(ur5e && panda && dh);
  std::mt19937 rng(7);
  const double h = 1e-6;
  for (const RkKinematicChain* chain : {ur5e.get(), panda.get(), dh.get()}) {
    const int n = chain->jointCount();
    // The tip and a link halfway, whose columns beyond its own joints must be zero.
    const int middle = chain->jointLinkIndex(n / 2 - 1);
    for (const int link : {static_cast<int>(chain->linkNames().size()) - 1, middle}) {
      for (int k = 0; k < 20; ++k) {
        const Eigen::VectorXd q = randomJoints(*chain, rng, 2 * h);
        Eigen::MatrixXd jacobian(6, n);
        ASSERT_TRUE(chain->linkJacobian(q, link, jacobian));
        for (int j = 0; j < n; ++j) {
          Eigen::VectorXd qp = q, qm = q;
          qp(j) += h;
          qm(j) -= h;
          Eigen::Isometry3d p, m;
          ASSERT_TRUE(chain->linkPlacement(qp, link, p));
          ASSERT_TRUE(chain->linkPlacement(qm, link, m));
          const Eigen::Vector3d linear = (p.translation() - m.translation()) / (2 * h);
          const Eigen::AngleAxisd turn(p.linear() * m.linear().transpose());
          const Eigen::Vector3d angular = turn.angle() * turn.axis() / (2 * h);
          EXPECT_LT((jacobian.block<3, 1>(0, j) - linear).norm(), 1e-6)
              << chain->tipLink() << " link " << link;
          EXPECT_LT((jacobian.block<3, 1>(3, j) - angular).norm(), 1e-6)
              << chain->tipLink() << " link " << link;
        }
      }
    }
  }
  // The tip Jacobian is the last link's; the DH frame of the last joint of the DH chain is the tool here.
  Eigen::VectorXd q = Eigen::VectorXd::Constant(6, 0.3);
  Eigen::Isometry3d frame, tip;
  ASSERT_TRUE(dh->dhFrame(q, 5, frame));
  ASSERT_TRUE(dh->tipPlacement(q, tip));
  EXPECT_TRUE(frame.isApprox(tip, 1e-12));
}

TEST(RkKinematicChain, SinglePassEvaluationAgreesWithTheSolvers) {
  auto ur5e = loadUr5e();
  auto panda = loadPanda();
  auto dh = ur5eFromDh();
  std::string error;
  auto finger =
      RkKinematicChain::fromUrdfFile(robotPath("panda.urdf"), "panda_link0", "panda_leftfinger", error);
  ASSERT_TRUE(ur5e && panda && dh && finger) << error;
  std::mt19937 rng(11);
  for (const RkKinematicChain* chain : {ur5e.get(), panda.get(), dh.get(), finger.get()}) {
    const int n = chain->jointCount();
    Eigen::MatrixXd expected(6, n), actual(6, n);
    for (int k = 0; k < 20; ++k) {
      const Eigen::VectorXd q = randomJoints(*chain, rng);
      for (int link = 0; link < static_cast<int>(chain->linkNames().size()); ++link) {
        Eigen::Isometry3d a, b;
        ASSERT_TRUE(chain->linkPlacement(q, link, a));
        ASSERT_TRUE(chain->linkJacobian(q, link, expected));
        ASSERT_TRUE(chain->linkPlacementAndJacobian(q, link, b, actual));
        EXPECT_LT((a.matrix() - b.matrix()).norm(), 1e-12) << chain->linkNames()[link];
        EXPECT_LT((expected - actual).norm(), 1e-12) << chain->linkNames()[link];
      }
    }
  }
}

TEST(RkKinematicChain, BadQueriesAreRefused) {
  auto ur5e = loadUr5e();
  ASSERT_TRUE(ur5e);
  Eigen::Isometry3d placement;
  Eigen::MatrixXd jacobian(6, 6), wrongJacobian(3, 6);
  EXPECT_FALSE(ur5e->tipPlacement(Eigen::VectorXd::Zero(5), placement));
  EXPECT_FALSE(ur5e->linkPlacement(Eigen::VectorXd::Zero(6), "panda_link0", placement));
  EXPECT_FALSE(ur5e->linkPlacement(Eigen::VectorXd::Zero(6), 99, placement));
  EXPECT_FALSE(ur5e->linkJacobian(Eigen::VectorXd::Zero(6), -1, jacobian));
  EXPECT_FALSE(ur5e->tipJacobian(Eigen::VectorXd::Zero(6), wrongJacobian));
  EXPECT_FALSE(ur5e->dhFrame(Eigen::VectorXd::Zero(6), 6, placement));
  EXPECT_FALSE(ur5e->linkPlacementAndJacobian(Eigen::VectorXd::Zero(6), 10, placement, jacobian));
  EXPECT_FALSE(ur5e->linkPlacementAndJacobian(Eigen::VectorXd::Zero(7), 3, placement, jacobian));
  EXPECT_FALSE(ur5e->setJointLimits(0, 1.0, -1.0, 1.0));
  EXPECT_FALSE(ur5e->setJointLimits(0, -1.0, 1.0, 0.0));
  // The base is the identity; a copy answers like the original.
  ASSERT_TRUE(ur5e->linkPlacement(Eigen::VectorXd::Constant(6, 0.4), 0, placement));
  EXPECT_TRUE(placement.isApprox(Eigen::Isometry3d::Identity()));
  const RkKinematicChain copy(*ur5e);
  Eigen::Isometry3d a, b;
  ASSERT_TRUE(ur5e->linkPlacement(Eigen::VectorXd::Constant(6, 0.4), "wrist_2_link", a));
  ASSERT_TRUE(copy.linkPlacement(Eigen::VectorXd::Constant(6, 0.4), "wrist_2_link", b));
  EXPECT_TRUE(a.isApprox(b, 1e-15));
}

namespace {

std::string writeTemporary(const std::string& name, const std::string& text) {
  const std::string path = testing::TempDir() + name;
  std::ofstream(path) << text;
  return path;
}

const char* kTwoJointArm = R"(<robot name="arm">
  <link name="a"/><link name="b"/><link name="c"/><link name="side"/>
  <joint name="ab" type="continuous"><parent link="a"/><child link="b"/><axis xyz="0 0 2"/>
    <origin xyz="0 0 1"/></joint>
  <joint name="bc" type="prismatic"><parent link="b"/><child link="c"/><axis xyz="1 0 0"/>
    <limit lower="0" upper="0.5" velocity="0" effort="1"/></joint>
  <joint name="aside" type="fixed"><parent link="a"/><child link="side"/></joint>
</robot>)";

}  // namespace

TEST(RkKinematicChain, DefaultsSideBranchesAndJointKinds) {
  std::string error;
  // Default base and tip: the root and the deepest link; the side branch is left out.
  auto arm = RkKinematicChain::fromUrdfString(kTwoJointArm, "arm.urdf", "", "", error);
  ASSERT_TRUE(arm) << error;
  EXPECT_EQ(arm->linkNames(), (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(arm->jointTypes(),
            (std::vector<RkKinematicChain::JointType>{RkKinematicChain::JointType::Continuous,
                                                      RkKinematicChain::JointType::Prismatic}));
  EXPECT_TRUE(std::isinf(arm->lowerLimits()(0)) && std::isinf(arm->upperLimits()(0)));
  EXPECT_TRUE(std::isinf(arm->velocityLimits()(1)));  // zero in the file: not bounded
  // The axis is normalised; the prismatic joint slides along x of the rotated link.
  Eigen::Isometry3d tip;
  ASSERT_TRUE(arm->tipPlacement(Eigen::Vector2d(M_PI / 2, 0.25), tip));
  EXPECT_LT((tip.translation() - Eigen::Vector3d(0, 0.25, 1)).norm(), 1e-12);

  // The UR5e default tip is tool0; the Panda's is ambiguous (TCP and fingers equally deep) and refused.
  auto ur5e = RkKinematicChain::fromUrdfFile(robotPath("ur5e.urdf"), "", "", error);
  ASSERT_TRUE(ur5e) << error;
  EXPECT_EQ(ur5e->baseLink(), "base_link");
  EXPECT_EQ(ur5e->tipLink(), "tool0");
  EXPECT_FALSE(RkKinematicChain::fromUrdfFile(robotPath("panda.urdf"), "", "", error));
  EXPECT_NE(error.find("panda_hand_tcp"), std::string::npos) << error;
  // A chain may start above the root's first joint and end on a finger.
  auto finger =
      RkKinematicChain::fromUrdfFile(robotPath("panda.urdf"), "panda_link2", "panda_leftfinger", error);
  ASSERT_TRUE(finger) << error;
  EXPECT_EQ(finger->jointCount(), 6);
  EXPECT_EQ(finger->jointTypes().back(), RkKinematicChain::JointType::Prismatic);
}

TEST(RkKinematicChain, LoadFailuresGiveOneLineNamingTheFileAndTheProblem) {
  const std::string missing = testing::TempDir() + "no-such-robot.urdf";
  std::remove(missing.c_str());
  const std::string broken = writeTemporary("broken.urdf", "<robot name=\"x\"><link name=\"a\"></robot");
  const std::string empty = writeTemporary("empty.urdf", "");
  const std::string floating = writeTemporary("floating.urdf",
                                              R"(<robot name="f"><link name="a"/><link name="b"/>
         <joint name="free" type="floating"><parent link="a"/><child link="b"/></joint></robot>)");
  const std::string mimic = writeTemporary("mimic.urdf",
                                           R"(<robot name="m"><link name="a"/><link name="b"/><link name="c"/>
         <joint name="j1" type="continuous"><parent link="a"/><child link="b"/></joint>
         <joint name="j2" type="continuous"><parent link="b"/><child link="c"/><mimic joint="j1"/></joint></robot>)");
  const std::string fixedOnly = writeTemporary("fixed.urdf",
                                               R"(<robot name="s"><link name="a"/><link name="b"/>
         <joint name="j" type="fixed"><parent link="a"/><child link="b"/></joint></robot>)");
  const std::string ur5e = robotPath("ur5e.urdf");
  struct Case {
    std::string path, base, tip, problem;
  };
  const Case cases[] = {
      {missing, "", "", "no such file"},
      {testing::TempDir(), "", "", "not a regular file"},
      {empty, "", "", "empty"},
      {broken, "", "", "not a valid URDF"},
      {floating, "", "", "'free'"},
      {mimic, "", "", "mimics"},
      {fixedOnly, "", "", "no movable joint"},
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

  // DH tables are checked as well.
  std::string error;
  std::vector<RkKinematicChain::DhJoint> table(2);
  table[1].a = std::nan("");
  EXPECT_FALSE(RkKinematicChain::fromDh(table, Eigen::Isometry3d::Identity(), Eigen::Isometry3d::Identity(),
                                        "t", error));
  EXPECT_EQ(error, "t: joint 'joint2' has a non-finite DH parameter");
  Eigen::Isometry3d sheared = Eigen::Isometry3d::Identity();
  sheared.linear()(0, 1) = 0.5;
  table[1].a = 0.1;
  EXPECT_FALSE(RkKinematicChain::fromDh(table, sheared, Eigen::Isometry3d::Identity(), "t", error));
  EXPECT_FALSE(
      RkKinematicChain::fromDh({}, Eigen::Isometry3d::Identity(), Eigen::Isometry3d::Identity(), "t", error));
}
