// Counts heap allocations while a flag is up, by standing in for the C allocator (which Eigen, KDL and
// operator new all end in) and forwarding to glibc's own. Not under AddressSanitizer, which owns malloc.
#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>

#include "RkSimulationTestSupport.h"
#include "simulation/RkArmController.h"

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define RK_COUNT_ALLOCATIONS 0
#else
#define RK_COUNT_ALLOCATIONS 1
#endif

#if RK_COUNT_ALLOCATIONS
namespace {
std::atomic<bool> g_counting{false};
std::atomic<long> g_allocations{0};
void count() {
  if (g_counting.load(std::memory_order_relaxed)) g_allocations.fetch_add(1, std::memory_order_relaxed);
}
}  // namespace

extern "C" {
void* __libc_malloc(size_t);
void* __libc_calloc(size_t, size_t);
void* __libc_realloc(void*, size_t);
void* __libc_memalign(size_t, size_t);
void __libc_free(void*);
void* malloc(size_t size) {
  return count(), __libc_malloc(size);
}
void* calloc(size_t n, size_t size) {
  return count(), __libc_calloc(n, size);
}
void* realloc(void* p, size_t size) {
  return count(), __libc_realloc(p, size);
}
void* memalign(size_t alignment, size_t size) {
  return count(), __libc_memalign(alignment, size);
}
void* aligned_alloc(size_t alignment, size_t size) {
  return count(), __libc_memalign(alignment, size);
}
int posix_memalign(void** out, size_t alignment, size_t size) {
  count();
  *out = __libc_memalign(alignment, size);
  return *out ? 0 : 12;  // ENOMEM
}
void free(void* p) {
  __libc_free(p);
}
}

namespace {
struct Counting {
  Counting() {
    g_allocations = 0;
    g_counting = true;
  }
  ~Counting() { g_counting = false; }
  long allocations() const { return g_allocations.load(); }
};
}  // namespace
#endif

TEST(RkAllocation, KinematicsAndControllerCyclesDoNotAllocate) {
#if !RK_COUNT_ALLOCATIONS
  GTEST_SKIP() << "allocations are not counted under a sanitizer";
#else
  auto ur5e = loadUr5e();
  ASSERT_TRUE(ur5e);
  std::string error;
  RkArmController controller(*ur5e);
  Eigen::VectorXd home(6);
  home << 0, -M_PI / 2, M_PI / 2, -M_PI / 2, -M_PI / 2, 0;
  ASSERT_TRUE(controller.setJointPositions(home, error));
  const int tool = controller.addEndEffector("tool", "tool0", RkArmController::EndEffectorKind::Frame, error);
  const int wrist =
      controller.addEndEffector("wrist", "wrist_2_link", RkArmController::EndEffectorKind::Point, error,
                                Eigen::Isometry3d(Eigen::Translation3d(0, 0, 0.05)));
  ASSERT_TRUE(tool >= 0 && wrist >= 0) << error;
  Eigen::Isometry3d goal = controller.status(tool)->placement, far = goal;
  goal.translation() += Eigen::Vector3d(-0.2, 0.1, 0.1);
  far.translation() = Eigen::Vector3d(3, 0, 0.5);
  const Eigen::VectorXd q = Eigen::VectorXd::Constant(6, 0.3);
  Eigen::MatrixXd jacobian(6, 6);
  Eigen::Isometry3d placement;

  Counting counting;
  // Forward kinematics and Jacobians into caller storage.
  ASSERT_TRUE(ur5e->tipPlacement(q, placement));
  ASSERT_TRUE(ur5e->linkPlacement(q, 4, placement));
  ASSERT_TRUE(ur5e->tipJacobian(q, jacobian));
  ASSERT_TRUE(ur5e->dhFrame(q, 2, placement));
  // Cycles towards a goal, with an end effector switched off and on, then towards an unreachable goal long
  // enough to stall and run the recovery search.
  ASSERT_TRUE(controller.setGoal(tool, goal, error));
  for (int i = 0; i < 300; ++i) ASSERT_TRUE(controller.step(0.001, error));
  ASSERT_TRUE(controller.setActive(wrist, false, error));
  ASSERT_TRUE(controller.setGoal(tool, far, error));
  for (int i = 0; i < 3000; ++i) ASSERT_TRUE(controller.step(0.001, error));
  ASSERT_TRUE(controller.setActive(wrist, true, error));
  ASSERT_TRUE(controller.setGoal(wrist, goal, error));
  for (int i = 0; i < 300; ++i) ASSERT_TRUE(controller.step(0.001, error));
  EXPECT_EQ(counting.allocations(), 0);
  EXPECT_FALSE(controller.status(tool)->mayKeepConverging);
#endif
}
