#include "offsets/RkConstantManipulationOffset.h"

#include "offsets/RkConstantManipulationOffsetState.h"
#include "offsets/RkManipulationOffsetStateContainer.h"
#include "sequencing/RkManipulationTokens.h"

const RkToken& RkConstantManipulationOffset::classToken() {
  return RkManipulation::RkConstantManipulationOffsetToken;
}

void RkConstantManipulationOffset::registerComponents() {
  registerComponent(RkManipulation::RkManipulationOffsetToken, &m_offset);
}

void RkConstantManipulationOffset::findDataMapReferences(std::map<std::string, RkReal>&) const {}

RkManipulationOffsetStateContainer RkConstantManipulationOffset::calculateEndState(
    const RkManipulationUpdateParams&, const RkManipulationSequence&, const RkManipulationSequenceState&,
    RkU32, RkU32) const {
  RkManipulationOffsetStateContainer container;
  container.setElement(RkConstantManipulationOffsetState());
  return container;
}

RkBoolean RkConstantManipulationOffset::init(RkReal, const RkManipulationUpdateParams&,
                                             const RkManipulationSequence&,
                                             const RkManipulationSequenceState&, RkU32, RkU32,
                                             RkManipulationOffsetStateContainer& stateContainer) const {
  stateContainer.setElement(RkConstantManipulationOffsetState());
  return true;
}

RkManipulationStatus::Enum RkConstantManipulationOffset::update(RkReal, const RkManipulationUpdateParams&,
                                                                const RkManipulationSequence&,
                                                                const RkManipulationSequenceState&, RkU32,
                                                                RkU32, RkManipulationOffsetState&) const {
  return RkManipulationStatus::Complete;
}

RkEndEffectorPlacement RkConstantManipulationOffset::calculateOffsetTransformationInSystemFrame(
    const RkManipulationUpdateParams&, const RkManipulationSequence&, const RkManipulationSequenceState&,
    RkU32, RkU32, const RkManipulationOffsetState&) const {
  return m_offset;
}

void RkConstantManipulationOffset::setFromOffsetTransformationInSystemFrame(
    const RkEndEffectorPlacement& placement, const RkManipulationUpdateParams&, const RkManipulationSequence&,
    const RkManipulationSequenceState&, RkU32, RkU32, RkManipulationOffsetState&) {
  m_offset = placement;
}

const RkEndEffectorPlacement& RkConstantManipulationOffset::currentOffsetTransformation(
    const RkManipulationOffsetState&) const {
  return m_offset;
}

const RkEndEffectorPlacement& RkConstantManipulationOffset::goalOffsetTransformation(
    const RkManipulationOffsetState&) const {
  return m_offset;
}
