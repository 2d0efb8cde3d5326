#include "foundation/RkVector.h"

#include <cmath>

RkVector& RkVector::operator+=(const RkVector& other) {
  m_value += other.m_value;
  return *this;
}

RkVector& RkVector::operator-=(const RkVector& other) {
  m_value -= other.m_value;
  return *this;
}

RkVector& RkVector::operator*=(RkReal factor) {
  m_value *= factor;
  return *this;
}

RkVector RkVector::normalized() const {
  const RkReal length = norm();
  return length > 0.0 ? RkVector(m_value / length) : RkVector();
}

bool RkVector::approxEq(const RkVector& other, RkReal tolerance) const {
  for (int i = 0; i < 3; ++i) {
    if (!(std::fabs(m_value[i] - other.m_value[i]) <= tolerance)) return false;
  }
  return true;
}
