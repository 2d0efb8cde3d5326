#pragma once
// Runs a whole sequence as one frame of another, through the sequence's own init and update, and answers
// every per-frame question with the subsequence's current frame. An optional event can hold it further:
//   <subsequenceManipulationFrame>
//     <tag>grasp</tag>
//     <manipulationSequence><manipulationFrameVector
//     count="3">...</manipulationFrameVector></manipulationSequence>
//   </subsequenceManipulationFrame>
// A sequence that has completed is not updated again: once the subsequence has reported Complete, the frame
// takes its result as Complete on the following cycles, so an event that outlasts it alone decides when the
// frame ends, and meanwhile the subsequence's last frame keeps its placements.
#include <string>

#include "frames/RkNestedManipulationFrame.h"
#include "frames/RkSubsequenceManipulationFrameState.h"
#include "sequencing/RkManipulationSequence.h"

class RkSubsequenceManipulationFrame
    : public RkNestedManipulationFrame<RkSubsequenceManipulationFrame, RkSubsequenceManipulationFrameState,
                                       RkManipulation::RkSubsequenceManipulationFrameToken> {
 public:
  // The subsequence's references.
  void findDataMapReferences(std::map<std::string, RkReal>& references) const override {
    m_subsequence.findDataMapReferences(references);
  }
  RkManipulationFrameStateContainer calculateEndState(const RkManipulationUpdateParams& params,
                                                      const RkManipulationSequence& sequence,
                                                      const RkManipulationSequenceState& sequenceState,
                                                      RkU32 frameIndex) const override;
  // Starts the subsequence and the event; the enclosing sequence is not used.
  RkBoolean init(RkReal time, const RkManipulationUpdateParams& params,
                 const RkManipulationSequence& sequence, const RkManipulationSequenceState& sequenceState,
                 RkU32 frameIndex, RkManipulationFrameStateContainer& stateContainer) const override;
  // One step of the subsequence, then the event, which is asked even when the subsequence fails.
  // Real-time safe while no frame of the subsequence starts or ends.
  RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                    const RkManipulationSequence& sequence,
                                    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex,
                                    RkManipulationFrameState& state) const override;
  // tag, prefix, then the subsequence's text; empty while the subsequence says nothing.
  std::string statusString(const RkManipulationFrameState& state, const std::string& prefix) const override;

  // The subsequence's current frame, or null when none runs.
  const RkManipulationFrame* runningFrame(const State& state) const;

  virtual const RkManipulationSequence& subsequence() const { return m_subsequence; }
  virtual void setSubsequence(const RkManipulationSequence& subsequence) { m_subsequence = subsequence; }

 protected:
  void registerComponents() override;

 private:
  RkManipulationSequence m_subsequence;
};
