// Moves through the XML hierarchy steal instead of copying: a whole sequence moves without one allocation,
// elements held by a single-element container follow it to its new place, and vectors of containers grow
// by moving them.
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "control/RkEndEffectorContainer.h"
#include "control/RkPointEndEffector.h"
#include "events/RkManipulationFrameTransitionEventStateContainer.h"
#include "events/RkManipulationTimeDurationTransitionEventState.h"
#include "frames/RkManipulationFrameStateContainer.h"
#include "frames/RkStandardManipulationFrameState.h"
#include "manipulation/support/RkAllocationCounter.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "offsets/RkConstantManipulationOffsetState.h"
#include "offsets/RkManipulationOffsetStateContainer.h"
#include "sequencing/RkManipulationActionContainer.h"
#include "sequencing/RkManipulationActionStateContainer.h"
#include "sequencing/RkManipulationSequenceState.h"

namespace {

template <class Container>
constexpr bool kNothrowMovable =
    std::is_nothrow_move_constructible<Container>::value&& std::is_nothrow_move_assignable<Container>::value;

static_assert(kNothrowMovable<RkManipulationActionContainer>);
static_assert(kNothrowMovable<RkManipulationActionStateContainer>);
static_assert(kNothrowMovable<RkManipulationFrameContainer>);
static_assert(kNothrowMovable<RkManipulationFrameStateContainer>);
static_assert(kNothrowMovable<RkManipulationOffsetContainer>);
static_assert(kNothrowMovable<RkManipulationOffsetStateContainer>);
static_assert(kNothrowMovable<RkManipulationFrameTransitionEventContainer>);
static_assert(kNothrowMovable<RkManipulationFrameTransitionEventStateContainer>);
static_assert(kNothrowMovable<RkEndEffectorContainer>);

// A frame of six constant offsets and a time-duration event. The tag is too long for the short string
// buffer, so copying it would allocate.
RkStandardManipulationFrame sixOffsetFrame(int index) {
  const RkReal x = 0.1 * index;
  return standardFrame("a frame with a long tag, number " + std::to_string(index),
                       {placementAt(x, 0, 0), placementAt(x, 1, 0), placementAt(x, 0, 1),
                        placementAt(x, 1, 1), placementAt(x, -1, 0), placementAt(x, 0, -1)},
                       lasting(0.5 + index));
}

RkManipulationSequence tenFramesOfSixOffsets() {
  RkManipulationSequence sequence;
  for (int i = 0; i < 10; ++i) sequence.add(sixOffsetFrame(i));
  return sequence;
}

// Every frame, offset and event of the sequence names as its container the one that holds it now.
void expectElementsPointAtTheirContainers(const RkManipulationSequence& sequence) {
  const RkStandardManipulationFrameState state;
  for (const RkManipulationFrameContainer& frames :
       sequence.manipulationFrameContainerVector().vectorContainer()) {
    ASSERT_NE(frames.element(), nullptr);
    EXPECT_EQ(frames.element()->container(), &frames);
    const auto& frame = dynamic_cast<const RkStandardManipulationFrame&>(*frames.element());
    for (const RkManipulationOffsetContainer& offsets :
         frame.offsetContainerVector(state).vectorContainer()) {
      EXPECT_EQ(offsets.element()->container(), &offsets);
    }
    const RkManipulationFrameTransitionEventContainer& event = frame.transitionEventContainer(state);
    EXPECT_EQ(event.element()->container(), &event);
  }
}

// Moving a container hands its element over, without a copy, and the element follows.
template <class Container, class Element>
void expectMovesHandTheElementOver(const Element& prototype) {
  Container source;
  source.setElement(prototype);
  const auto* element = source.element();
  ASSERT_NE(element, nullptr);

  RkAllocationCounter::start();
  Container constructed(std::move(source));
  EXPECT_EQ(RkAllocationCounter::stop(), 0) << typeid(Container).name();
  EXPECT_EQ(constructed.element(), element);
  EXPECT_EQ(source.element(), nullptr);
  EXPECT_EQ(element->container(), &constructed);

  Container assigned;
  assigned.setElement(prototype);
  RkAllocationCounter::start();
  assigned = std::move(constructed);
  EXPECT_EQ(RkAllocationCounter::stop(), 0) << typeid(Container).name();
  EXPECT_EQ(assigned.element(), element);
  EXPECT_EQ(constructed.element(), nullptr);
  EXPECT_EQ(element->container(), &assigned);
}

}  // namespace

TEST(RkManipulationMove, moving_a_ten_frame_sequence_allocates_nothing_and_keeps_it_whole) {
  RkManipulationSequence source = tenFramesOfSixOffsets();
  const RkManipulationSequence before = source;
  ASSERT_EQ(before.manipulationFrameContainerVector().size(), 10u);

  RkAllocationCounter::start();
  RkManipulationSequence constructed(std::move(source));
  EXPECT_EQ(RkAllocationCounter::stop(), 0);
  EXPECT_TRUE(constructed == before);
  EXPECT_EQ(source.manipulationFrameContainerVector().size(), 0u);
  expectElementsPointAtTheirContainers(constructed);

  // Assigning over a sequence that already holds frames frees them and takes the new ones.
  RkManipulationSequence assigned = timedSequence(3, 1.0);
  RkAllocationCounter::start();
  assigned = std::move(constructed);
  EXPECT_EQ(RkAllocationCounter::stop(), 0);
  EXPECT_TRUE(assigned == before);
  expectElementsPointAtTheirContainers(assigned);

  // The counter sees a copy, so the zeros above mean something; and the copy is as whole as the move.
  RkAllocationCounter::start();
  const RkManipulationSequence copied(assigned);
  EXPECT_GT(RkAllocationCounter::stop(), 10 * 7);
  EXPECT_TRUE(copied == before);
  expectElementsPointAtTheirContainers(copied);
}

TEST(RkManipulationMove, a_moved_container_hands_its_element_over_and_the_element_follows) {
  expectMovesHandTheElementOver<RkManipulationFrameContainer>(sixOffsetFrame(1));
  expectMovesHandTheElementOver<RkManipulationActionContainer>(tenFramesOfSixOffsets());
  RkConstantManipulationOffset offset;
  offset.setOffset(RkEndEffectorPlacement(placementAt(0.4, 0, 0.3)));
  expectMovesHandTheElementOver<RkManipulationOffsetContainer>(offset);
  expectMovesHandTheElementOver<RkManipulationFrameTransitionEventContainer>(lasting(2.0));
  expectMovesHandTheElementOver<RkManipulationOffsetStateContainer>(RkConstantManipulationOffsetState());
  expectMovesHandTheElementOver<RkManipulationFrameTransitionEventStateContainer>(
      RkManipulationTimeDurationTransitionEventState());
  expectMovesHandTheElementOver<RkManipulationFrameStateContainer>(RkStandardManipulationFrameState());
  expectMovesHandTheElementOver<RkManipulationActionStateContainer>(RkManipulationSequenceState());

  // A move of a frame itself moves its event container, whose event must follow it too.
  RkStandardManipulationFrame frame = sixOffsetFrame(2);
  const RkStandardManipulationFrame moved(std::move(frame));
  const RkStandardManipulationFrameState state;
  EXPECT_EQ(moved.transitionEventContainer(state).element()->container(),
            &moved.transitionEventContainer(state));

  // An empty container moves as an empty one.
  RkManipulationFrameContainer empty;
  RkManipulationFrameContainer stillEmpty(std::move(empty));
  EXPECT_EQ(stillEmpty.element(), nullptr);
  RkEndEffectorContainer endEffectors;
  endEffectors.setElement(RkPointEndEffector());
  RkEndEffectorContainer movedEndEffectors(std::move(endEffectors));
  EXPECT_NE(movedEndEffectors.element(), nullptr);
  EXPECT_EQ(endEffectors.element(), nullptr);
}

TEST(RkManipulationMove, a_vector_of_frame_containers_grows_by_moving_them) {
  constexpr int kCount = 40;
  std::vector<RkManipulationFrameContainer> sources;
  sources.reserve(kCount);
  for (int i = 0; i < kCount; ++i) {
    sources.emplace_back();
    sources.back().setElement(sixOffsetFrame(i));
  }
  const std::vector<RkManipulationFrameContainer> before = sources;

  std::vector<RkManipulationFrameContainer> grown;
  long buffers = 0;
  RkAllocationCounter::start();
  for (RkManipulationFrameContainer& container : sources) {
    const std::size_t capacity = grown.capacity();
    grown.push_back(std::move(container));
    if (grown.capacity() != capacity) ++buffers;
  }
  const long allocations = RkAllocationCounter::stop();
  // Only the vector's own buffer is allocated, once per growth; no frame is copied.
  EXPECT_GT(buffers, 3);
  EXPECT_EQ(allocations, buffers);

  ASSERT_EQ(grown.size(), before.size());
  for (std::size_t i = 0; i < grown.size(); ++i) {
    EXPECT_TRUE(grown[i] == before[i]) << "frame " << i;
    ASSERT_NE(grown[i].element(), nullptr);
    EXPECT_EQ(grown[i].element()->container(), &grown[i]) << "frame " << i;
  }
}
