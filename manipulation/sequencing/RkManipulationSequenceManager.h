#pragma once
// The client's entry point: named sequences run in the given order, one update per control cycle.
//   <manipulationSequenceManager>
//     <sequenceOrder count="2"><group>approach retreat</group></sequenceOrder>
//     <sequenceMap><element><key>approach</key><value>...</value></element>...</sequenceMap>
//   </manipulationSequenceManager>
#include <string>

#include "sequencing/RkManipulationSequence.h"
#include "sequencing/RkManipulationSequenceManagerState.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlMapType.h"

class RkManipulationSequenceManager
    : public RkXmlConcreteClass<RkManipulationSequenceManager, RkXmlCompoundType,
                                RkManipulation::RkManipulationSequenceManagerToken> {
 public:
  typedef RkXmlVectorType<RkXmlBasicType<std::string>> SequenceOrder;
  typedef RkXmlMapType<RkXmlBasicType<std::string>, RkManipulationSequence> SequenceMap;

  // Stores a copy under name; the order is not touched.
  virtual void add(const std::string& name, const RkManipulationSequence& sequence);
  virtual void remove(const std::string& name);
  // The sequence named at the state's position, or null past the order's end or for a name not in the map.
  virtual const RkManipulationSequence* currentSequence(
      const RkManipulationSequenceManagerState& state) const;
  virtual RkManipulationSequence* currentSequence(const RkManipulationSequenceManagerState& state);
  // The queries ask the running sequence; with none they give 0 or the null objects.
  virtual const RkManipulatorEndEffectorPlacement& endEffectorPlacement(
      const RkManipulationSequenceManagerState& state) const;
  virtual const RkDataMap& dataMap(const RkManipulationSequenceManagerState& state) const;
  virtual RkU32 activeControlDescription(const RkManipulationSequenceManagerState& state) const;
  virtual RkU32 activeEndEffectorSet(const RkManipulationSequenceManagerState& state) const;
  virtual RkU32 activeControlMethod(const RkManipulationSequenceManagerState& state) const;
  // The state at the end of the last sequence of the order, without running anything.
  virtual RkManipulationSequenceManagerState calculateEndState(
      const RkManipulationUpdateParams& params) const;
  virtual RkBoolean init(RkManipulationSequenceManagerState& state) const;
  // One control step. Real-time path while no frame or sequence starts or ends: allocates nothing, takes
  // no lock, throws nothing; prints only on Failure.
  virtual RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                            RkManipulationSequenceManagerState& state) const;
  virtual std::string statusString(const RkManipulationSequenceManagerState& state,
                                   const std::string& prefix) const;

  // True when the map holds no sequence, whatever the order says.
  bool empty() const { return m_sequenceMap.size() == 0; }
  const SequenceMap& sequenceMap() const { return m_sequenceMap; }
  void setSequenceMap(const SequenceMap& sequences) { m_sequenceMap = sequences; }
  const SequenceOrder& sequenceOrder() const { return m_sequenceOrder; }
  void setSequenceOrder(const SequenceOrder& order) { m_sequenceOrder = order; }

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkSequenceOrderToken, &m_sequenceOrder,
                      "the names of the sequences to run, in order; a name may repeat");
    registerComponent(RkManipulation::RkSequenceMapToken, &m_sequenceMap, "the sequences by name");
  }

 private:
  // Query's answer for the running sequence and its state, or fallback when there is none.
  template <class Query, class Fallback>
  decltype(auto) askRunningSequence(const RkManipulationSequenceManagerState& state, Query query,
                                    Fallback&& fallback) const;

  SequenceOrder m_sequenceOrder;
  SequenceMap m_sequenceMap;
};
