#pragma once
// Builders of small tasks for the library's tests, and one scripted event: it completes after a given number
// of updates (0: at once) or fails on a given update, so the hand-over rules can be driven exactly.
#include <string>

#include "events/RkManipulationFrameTransitionEventState.h"
#include "events/RkManipulationFrameTransitionEventStateContainer.h"
#include "events/RkManipulationTimeDurationTransitionEvent.h"
#include "frames/RkStandardManipulationFrame.h"
#include "manipulation/support/RkAllocationCounter.h"
#include "offsets/RkConstantManipulationOffset.h"
#include "sequencing/RkManipulationSequenceManager.h"
#include "xml/RkXmlTokens.h"

inline const RkToken RkCountdownEventStateToken = RkXml::qualifiedToken("countdownEventState");

class RkCountdownEventState
    : public RkXmlConcreteClass<RkCountdownEventState, RkManipulationFrameTransitionEventState,
                                RkCountdownEventStateToken> {
 public:
  RkXmlBasicType<RkU32> m_remaining;

 protected:
  void registerComponents() override { registerComponent(RkXml::qualifiedToken("remaining"), &m_remaining); }
};

inline const RkToken RkCountdownEventToken = RkXml::qualifiedToken("countdownEvent");

class RkCountdownEvent
    : public RkXmlConcreteClass<RkCountdownEvent, RkManipulationFrameTransitionEvent, RkCountdownEventToken> {
 public:
  explicit RkCountdownEvent(RkU32 updates = 0, bool failAtEnd = false)
      : m_updates(updates), m_failAtEnd(failAtEnd) {}
  RkManipulationFrameTransitionEventStateContainer calculateEndState(
      const RkManipulationUpdateParams&, const RkManipulationFrame&) const override {
    RkManipulationFrameTransitionEventStateContainer container;
    container.setElement(RkCountdownEventState());
    return container;
  }
  RkBoolean init(RkReal, const RkManipulationUpdateParams&, const RkManipulationFrame&,
                 RkManipulationFrameTransitionEventStateContainer& container) const override {
    RkCountdownEventState state;
    state.m_remaining = m_updates;
    container.setElement(state);
    return true;
  }
  RkManipulationStatus::Enum update(RkReal, const RkManipulationUpdateParams&, const RkManipulationFrame&,
                                    const RkManipulationFrameState&,
                                    RkManipulationFrameTransitionEventState& state) const override {
    auto& countdown = dynamic_cast<RkCountdownEventState&>(state);
    if (countdown.m_remaining.value() > 0) {
      countdown.m_remaining = countdown.m_remaining.value() - 1;
      return RkManipulationStatus::InProgress;
    }
    return m_failAtEnd ? RkManipulationStatus::Failure : RkManipulationStatus::Complete;
  }

 private:
  RkXmlBasicType<RkU32> m_updates;
  RkXmlBasicType<RkBoolean> m_failAtEnd;
};

inline RkCoordinateSystemTransformation placementAt(RkReal x, RkReal y, RkReal z) {
  return RkCoordinateSystemTransformation(RkVector(x, y, z), RkOrientation());
}

// A standard frame with one constant offset per placement and the given event.
inline RkStandardManipulationFrame standardFrame(
    const std::string& tag, std::initializer_list<RkCoordinateSystemTransformation> goals,
    const RkManipulationFrameTransitionEvent& event) {
  RkStandardManipulationFrame frame;
  frame.setTag(tag);
  RkXmlVectorType<RkManipulationOffsetContainer> offsets;
  for (const RkCoordinateSystemTransformation& goal : goals) {
    RkConstantManipulationOffset offset;
    offset.setOffset(RkEndEffectorPlacement(goal));
    RkManipulationOffsetContainer container;
    container.setElement(offset);
    offsets.pushBack(container);
  }
  frame.setOffsetContainerVector(offsets);
  RkManipulationFrameTransitionEventContainer eventContainer;
  eventContainer.setElement(event);
  frame.setTransitionEventContainer(eventContainer);
  return frame;
}

inline RkManipulationTimeDurationTransitionEvent lasting(RkReal seconds) {
  RkManipulationTimeDurationTransitionEvent event;
  event.setTimeDuration(seconds);
  return event;
}

// A sequence of frames that each hold their goal for the given time.
inline RkManipulationSequence timedSequence(int frames, RkReal seconds, RkReal firstX = 0.3) {
  RkManipulationSequence sequence;
  for (int i = 0; i < frames; ++i) {
    sequence.add(standardFrame("frame " + std::to_string(i), {placementAt(firstX + 0.01 * i, 0.1, 0.4)},
                               lasting(seconds)));
  }
  return sequence;
}

inline RkManipulationSequenceManager::SequenceOrder orderOf(std::initializer_list<const char*> names) {
  RkManipulationSequenceManager::SequenceOrder order;
  for (const char* name : names) order.pushBack(RkXmlBasicType<std::string>(name));
  return order;
}

// What a run made in its steady cycles (those that returned InProgress), and how it ended.
struct RkSteadyCycles {
  long cycles = 0;
  long allocations = 0;
  RkManipulationStatus::Enum last = RkManipulationStatus::InProgress;
};

// Updates an initialised manager every millisecond until Complete, Failure or cycles updates, counting
// the allocations of its steady cycles.
inline RkSteadyCycles runCountingAllocations(const RkManipulationSequenceManager& manager,
                                             RkManipulationSequenceManagerState& state, int cycles,
                                             const RkManipulationUpdateParams& params = {}) {
  RkSteadyCycles steady;
  for (int cycle = 0; cycle < cycles; ++cycle) {
    RkAllocationCounter::start();
    steady.last = manager.update(0.001 * cycle, params, state);
    const long allocations = RkAllocationCounter::stop();
    if (steady.last == RkManipulationStatus::InProgress) {
      ++steady.cycles;
      steady.allocations += allocations;
    }
    if (steady.last == RkManipulationStatus::Complete || steady.last == RkManipulationStatus::Failure) break;
  }
  return steady;
}
