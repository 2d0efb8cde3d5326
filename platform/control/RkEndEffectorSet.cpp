#include "control/RkEndEffectorSet.h"

#include "control/RkControlTokens.h"
#include "foundation/RkPrint.h"

const RkEndEffector* RkEndEffectorSet::endEffector(RkU32 index) const {
  if (index >= m_endEffectors.size()) {
    Rk::Print::write(4, "RkEndEffectorSet::endEffector: index %u is beyond the set's %u end effectors\n",
                     index, m_endEffectors.size());
    return nullptr;
  }
  const RkEndEffector* found = m_endEffectors[index].element();
  // An entry read from a tag no creator knows stays empty.
  if (!found) Rk::Print::write(4, "RkEndEffectorSet::endEffector: entry %u holds no end effector\n", index);
  return found;
}

void RkEndEffectorSet::add(const RkEndEffector& endEffector) {
  RkEndEffectorContainer container;
  container.setElement(endEffector);
  m_endEffectors.pushBack(container);
}

const RkEndEffectorSet& RkEndEffectorSet::nullObject() {
  static const RkEndEffectorSet empty;
  return empty;
}

void RkEndEffectorSet::registerComponents() {
  registerComponent(RkControl::RkEndEffectorsToken, &m_endEffectors,
                    "the end effectors of the set, in index order");
}
