#pragma once
// Holds one end effector of any kind, read from XML by its tag:
//   <endEffectorContainer><frameEndEffector>...</frameEndEffector></endEffectorContainer>
#include "control/RkEndEffector.h"
#include "xml/RkXmlVariableElementType.h"

class RkEndEffectorContainer : public RkXmlVariableElementType<RkEndEffector> {
 public:
  RkEndEffectorContainer() = default;

  bool operator==(const RkEndEffectorContainer& other) const {
    return RkXmlVariableElementType<RkEndEffector>::operator==(other);
  }
  bool operator!=(const RkEndEffectorContainer& other) const { return !(*this == other); }

  RkBoolean equality(const RkXmlObject* other) const override;
  RkXmlObject* newObject() const override { return new RkEndEffectorContainer; }
  RkXmlObject* clone() const override { return new RkEndEffectorContainer(*this); }
  const RkToken& token() const override { return classToken(); }
  static const RkToken& classToken();
  // An empty container.
  static RkEndEffectorContainer nullObject() { return RkEndEffectorContainer(); }

 protected:
  void registerComponentCreators() override;
};
