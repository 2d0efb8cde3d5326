#pragma once
// Runs the elements of a list one after another with the hand-over rule shared by every level (a sequence
// over its frames, the manager over its sequences): finish the hand-over the last call announced, start the
// element that needs it, update it, and report what its result means for the list.
//
// List is a small adaptor over the level's description and state that supplies:
//   owner(), elementName()              "RkManipulationSequence", "frame": the words of the messages
//   index(), setIndex(i), needsInit(), setNeedsInit(b), isComplete(), setComplete(b), count()
//   element(i)                          the element, or null after printing why
//   stateAgrees(i)                      false, after one line, when a state read back cannot be trusted
//   start(element, i)                   init into a fresh state container, stored in the list's state
//   elementState(i)                     the running element's state, or null
//   pastEndMessage(), noStateMessage()  the lines printed, with the index (and count), for those faults
//   update(element, elementState)       the element's own update
#include <limits>

#include "foundation/RkPrint.h"
#include "sequencing/RkManipulationStatus.h"

namespace RkManipulationListRunner {

// One control step of the list. Allocates nothing, takes no lock, throws nothing; prints only on Failure
// (starting an element may allocate its state).
template <class List>
RkManipulationStatus::Enum step(List& list) {
  if (list.isComplete()) {
    if (list.index() == std::numeric_limits<RkU32>::max()) {
      Rk::Print::write(4, "%s::update %s %u is complete and no index can follow it; the state is damaged.\n",
                       list.owner(), list.elementName(), list.index());
      return RkManipulationStatus::Failure;
    }
    list.setIndex(list.index() + 1);
    list.setNeedsInit(true);
    list.setComplete(false);
  }
  const RkU32 index = list.index();
  if (index >= list.count()) {
    Rk::Print::write(4, list.pastEndMessage(), index, list.count());
    return RkManipulationStatus::Failure;
  }
  if (!list.stateAgrees(index)) return RkManipulationStatus::Failure;
  const auto* element = list.element(index);
  if (!element) return RkManipulationStatus::Failure;
  const bool startedNow = list.needsInit();
  if (startedNow) {
    list.setNeedsInit(false);
    if (!list.start(*element, index)) {
      Rk::Print::write(4, "%s::update unable to initialize %s %d.\n", list.owner(), list.elementName(),
                       static_cast<int>(index));
      return RkManipulationStatus::Failure;
    }
  }
  auto* elementState = list.elementState(index);
  if (!elementState) {
    Rk::Print::write(4, list.noStateMessage(), static_cast<int>(index));
    return RkManipulationStatus::Failure;
  }
  const RkManipulationStatus::Enum result = list.update(*element, *elementState);
  switch (result) {
    case RkManipulationStatus::Failure:
      Rk::Print::write(4, "%s::update unable to update %s %d.\n", list.owner(), list.elementName(),
                       static_cast<int>(index));
      return RkManipulationStatus::Failure;
    case RkManipulationStatus::InProgress:
      return startedNow ? RkManipulationStatus::Transition : RkManipulationStatus::InProgress;
    case RkManipulationStatus::Transition:
      return RkManipulationStatus::Transition;
    default:
      // Complete, or any value past Transition: the element is done.
      list.setComplete(true);
      return index + 1 < list.count() ? RkManipulationStatus::Transition : RkManipulationStatus::Complete;
  }
}

// The answer of the running element to a query, or fallback when nothing is running.
template <class Element, class ElementState, class Query, class Fallback>
decltype(auto) ask(const Element* element, const ElementState* elementState, Query query,
                   Fallback&& fallback) {
  typedef decltype(query(*element, *elementState)) Answer;
  if (element && elementState) return static_cast<Answer>(query(*element, *elementState));
  return static_cast<Answer>(fallback);
}

}  // namespace RkManipulationListRunner
