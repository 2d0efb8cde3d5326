#pragma once
// The end effectors a manipulator is driven with at one time, of any kinds; an action's placements give
// one entry per end effector of the set, in the same order:
//   <endEffectorSet><endEffectors count="1"><element><pointEndEffector>...</pointEndEffector>
//   </element></endEffectors></endEffectorSet>
#include "control/RkControlTokens.h"
#include "control/RkEndEffectorContainer.h"
#include "xml/RkXmlCompoundType.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlVectorType.h"

class RkEndEffectorSet
    : public RkXmlConcreteClass<RkEndEffectorSet, RkXmlCompoundType, RkControl::RkEndEffectorSetToken> {
 public:
  RkEndEffectorSet() = default;

  RkU32 size() const { return m_endEffectors.size(); }
  // End effector index, or null (with one printed line) when there is none at that index.
  const RkEndEffector* endEffector(RkU32 index) const;
  // Appends a copy of endEffector.
  void add(const RkEndEffector& endEffector);

  // The empty set, for callers that must return a set by reference when they have none.
  static const RkEndEffectorSet& nullObject();

 protected:
  void registerComponents() override;

 private:
  RkXmlVectorType<RkEndEffectorContainer> m_endEffectors;
};
