#pragma once
// Shared helpers for the simulation tests: the two example robots and seeded random joint positions.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>
#include <string>

#include "simulation/RkKinematicChain.h"

inline std::string robotPath(const std::string& file) {
  return std::string(RK_ROBOTS_DIR) + "/" + file;
}

inline std::unique_ptr<RkKinematicChain> loadUr5e() {
  std::string error;
  auto chain = RkKinematicChain::fromUrdfFile(robotPath("ur5e.urdf"), "base_link", "tool0", error);
  EXPECT_TRUE(chain) << error;
  return chain;
}

inline std::unique_ptr<RkKinematicChain> loadPanda() {
  std::string error;
  auto chain =
      RkKinematicChain::fromUrdfFile(robotPath("panda.urdf"), "panda_link0", "panda_hand_tcp", error);
  EXPECT_TRUE(chain) << error;
  return chain;
}

// Uniform joint positions within the chain's limits less a margin (unlimited joints within +-pi).
inline Eigen::VectorXd randomJoints(const RkKinematicChain& chain, std::mt19937& rng, double margin = 0.0) {
  Eigen::VectorXd q(chain.jointCount());
  for (int i = 0; i < q.size(); ++i) {
    const double lo = (std::isinf(chain.lowerLimits()(i)) ? -M_PI : chain.lowerLimits()(i)) + margin;
    const double hi = (std::isinf(chain.upperLimits()(i)) ? M_PI : chain.upperLimits()(i)) - margin;
    q(i) = std::uniform_real_distribution<double>(lo, hi)(rng);
  }
  return q;
}
