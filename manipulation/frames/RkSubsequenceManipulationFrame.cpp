#include "frames/RkSubsequenceManipulationFrame.h"

#include "frames/RkManipulationFrameStateContainer.h"

void RkSubsequenceManipulationFrame::registerComponents() {
  RkManipulationFrame::registerComponents();
  registerComponent(RkManipulation::RkManipulationSequenceToken, &m_subsequence,
                    "the sequence run, frame by frame, as this one frame");
  registerComponent(RkManipulation::RkManipulationFrameTransitionEventContainerToken,
                    &m_transitionEventContainer,
                    "optional; must also have fired before the frame ends after its sequence completes");
}

const RkManipulationFrame* RkSubsequenceManipulationFrame::runningFrame(const State& state) const {
  const RkManipulationActionState* subsequenceState = state.subsequenceState();
  return subsequenceState ? m_subsequence.currentFrame(*subsequenceState) : nullptr;
}

RkBoolean RkSubsequenceManipulationFrame::init(RkReal time, const RkManipulationUpdateParams& params,
                                               const RkManipulationSequence&,
                                               const RkManipulationSequenceState&, RkU32,
                                               RkManipulationFrameStateContainer& stateContainer) const {
  State& state = stateContainer.setNewElement<State>();
  RkManipulationActionStateContainer subsequenceState;
  if (!m_subsequence.init(subsequenceState)) {
    Rk::Print::write(4, "RkSubsequenceManipulationFrame::init failed to initialize the subsequence.\n");
    return false;
  }
  state.subsequenceStateContainer() = std::move(subsequenceState);
  return initEvent(time, params, state, "RkSubsequenceManipulationFrame");
}

RkManipulationStatus::Enum RkSubsequenceManipulationFrame::update(
    RkReal time, const RkManipulationUpdateParams& params, const RkManipulationSequence&,
    const RkManipulationSequenceState&, RkU32, RkManipulationFrameState& frameState) const {
  State& state = dynamic_cast<State&>(frameState);
  RkManipulationActionState* subsequenceState = state.subsequenceState();
  if (!subsequenceState) {
    Rk::Print::write(4, "RkSubsequenceManipulationFrame::update missing subsequence state.\n");
    return RkManipulationStatus::Failure;
  }
  // A completed sequence must not be updated again: its last result stands.
  const auto& sequenceState = dynamic_cast<const RkManipulationSequenceState&>(*subsequenceState);
  const bool finished =
      sequenceState.currentFrameIsComplete() &&
      sequenceState.currentFrameIndex() + 1 >= m_subsequence.manipulationFrameContainerVector().size();
  const RkManipulationStatus::Enum result =
      finished ? RkManipulationStatus::Complete : m_subsequence.update(time, params, *subsequenceState);
  const RkManipulationStatus::Enum event =
      updateEvent(time, params, state, result, "RkSubsequenceManipulationFrame");
  if (event == RkManipulationStatus::Failure) return event;
  return event != result && result == RkManipulationStatus::Complete ? event : result;
}

RkManipulationFrameStateContainer RkSubsequenceManipulationFrame::calculateEndState(
    const RkManipulationUpdateParams& params, const RkManipulationSequence&,
    const RkManipulationSequenceState&, RkU32) const {
  RkManipulationFrameStateContainer container;
  State& state = container.setNewElement<State>();
  state.subsequenceStateContainer().setElement(m_subsequence.calculateEndState(params));
  endEvent(params, state);
  return container;
}

std::string RkSubsequenceManipulationFrame::statusString(const RkManipulationFrameState& frameState,
                                                         const std::string& prefix) const {
  const State& state = dynamic_cast<const State&>(frameState);
  const RkManipulationActionState* subsequenceState = state.subsequenceState();
  const std::string text =
      subsequenceState ? m_subsequence.statusString(*subsequenceState, prefix) : std::string();
  return text.empty() ? text : tag().value() + prefix + text;
}
