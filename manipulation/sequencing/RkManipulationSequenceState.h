#pragma once
// The state of an RkManipulationSequence: the running frame's index, the two flags that carry the hand-over
// between frames from one cycle to the next, and the states of the frames started so far (entry i is frame
// i's).
#include "frames/RkManipulationFrameStateContainer.h"
#include "sequencing/RkManipulationActionState.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlVectorType.h"

class RkManipulationSequenceState
    : public RkXmlConcreteClass<RkManipulationSequenceState, RkManipulationActionState,
                                RkManipulation::RkManipulationSequenceStateToken> {
 public:
  virtual void add(const RkManipulationFrameState& frameState);
  virtual void add(const RkManipulationFrameStateContainer& container);
  // Appends the container itself, taking its state over.
  virtual void add(RkManipulationFrameStateContainer&& container);
  // Back to frame 0, both flags false, no frame states.
  virtual void clear();
  virtual void deleteFrame(RkU32 index);
  // Room for the states of count frames, so that starting a frame does not regrow the list.
  virtual void reserveFrames(RkU32 count) { m_frameStateContainerVector.reserve(count); }
  virtual const RkXmlVectorType<RkManipulationFrameStateContainer>& manipulationFrameStateContainerVector()
      const {
    return m_frameStateContainerVector;
  }
  virtual void setManipulationFrameStateContainerVector(
      const RkXmlVectorType<RkManipulationFrameStateContainer>& v) {
    m_frameStateContainerVector = v;
  }
  virtual RkU32 currentFrameIndex() const { return m_currentFrameIndex; }
  virtual void setCurrentFrameIndex(RkU32 index) { m_currentFrameIndex = index; }
  virtual RkBoolean currentFrameNeedsInit() const { return m_currentFrameNeedsInit; }
  virtual void setCurrentFrameNeedsInit(RkBoolean needsInit) { m_currentFrameNeedsInit = needsInit; }
  virtual RkBoolean currentFrameIsComplete() const { return m_currentFrameIsComplete; }
  virtual void setCurrentFrameIsComplete(RkBoolean isComplete) { m_currentFrameIsComplete = isComplete; }
  // The state of the running frame, or null when none was stored for the current index.
  virtual const RkManipulationFrameState* currentFrameState() const;
  virtual RkManipulationFrameState* currentFrameState();

 protected:
  void registerComponents() override;

 private:
  RkXmlBasicType<RkU32> m_currentFrameIndex;
  RkXmlBasicType<RkBoolean> m_currentFrameNeedsInit;
  RkXmlBasicType<RkBoolean> m_currentFrameIsComplete;
  RkXmlVectorType<RkManipulationFrameStateContainer> m_frameStateContainerVector;
};
