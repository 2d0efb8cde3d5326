#pragma once
// The state of an RkManipulationSequenceManager: the position in the order, the two hand-over flags and the
// state of the running sequence only.
#include "sequencing/RkManipulationActionStateContainer.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlCompoundType.h"
#include "xml/RkXmlConcreteClass.h"

class RkManipulationSequenceManagerState
    : public RkXmlConcreteClass<RkManipulationSequenceManagerState, RkXmlCompoundType,
                                RkManipulation::RkManipulationSequenceManagerStateToken> {
 public:
  // Back to the first position, both flags false, an empty state container.
  virtual void clear();
  virtual RkU32 currentSequenceIndex() const { return m_currentSequenceIndex; }
  virtual void setCurrentSequenceIndex(RkU32 index) { m_currentSequenceIndex = index; }
  virtual RkBoolean currentSequenceNeedsInit() const { return m_currentSequenceNeedsInit; }
  virtual void setCurrentSequenceNeedsInit(RkBoolean needsInit) { m_currentSequenceNeedsInit = needsInit; }
  virtual RkBoolean currentSequenceIsComplete() const { return m_currentSequenceIsComplete; }
  virtual void setCurrentSequenceIsComplete(RkBoolean isComplete) {
    m_currentSequenceIsComplete = isComplete;
  }
  virtual const RkManipulationActionStateContainer& currentSequenceStateContainer() const {
    return m_currentSequenceStateContainer;
  }
  virtual RkManipulationActionStateContainer& currentSequenceStateContainer() {
    return m_currentSequenceStateContainer;
  }

 protected:
  void registerComponents() override;

 private:
  RkXmlBasicType<RkU32> m_currentSequenceIndex;
  RkXmlBasicType<RkBoolean> m_currentSequenceNeedsInit;
  RkXmlBasicType<RkBoolean> m_currentSequenceIsComplete;
  RkManipulationActionStateContainer m_currentSequenceStateContainer;
};
