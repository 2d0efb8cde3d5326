#include "foundation/RkOrientation.h"

#include <Eigen/SVD>

#include <cmath>

namespace {
// Keeps a quaternion that is already of unit length bit for bit, so stored values read back unchanged.
Eigen::Quaterniond normalizedOrIdentity(const Eigen::Quaterniond& q) {
  const RkReal length = q.norm();
  if (!(length > 0.0) || !std::isfinite(length)) return Eigen::Quaterniond::Identity();
  if (std::fabs(length - 1.0) <= 1e-14) return q;
  return Eigen::Quaterniond(q.coeffs() / length);
}
}  // namespace

RkOrientation::RkOrientation(RkReal w, RkReal x, RkReal y, RkReal z)
    : m_value(normalizedOrIdentity(Eigen::Quaterniond(w, x, y, z))) {}

RkOrientation::RkOrientation(const Eigen::Quaterniond& value) : m_value(normalizedOrIdentity(value)) {}

RkOrientation RkOrientation::fromAngleAxis(RkReal angle, const RkVector& axis) {
  if (!(axis.norm() > 0.0)) return RkOrientation();
  return RkOrientation(Eigen::Quaterniond(Eigen::AngleAxisd(angle, axis.normalized().eigen())));
}

RkOrientation RkOrientation::operator*(const RkOrientation& other) const {
  return RkOrientation(m_value * other.m_value);
}

void RkOrientation::setFromDcmRows(const RkVector& row0, const RkVector& row1, const RkVector& row2) {
  Eigen::Matrix3d m;
  m.row(0) = row0.eigen().transpose();
  m.row(1) = row1.eigen().transpose();
  m.row(2) = row2.eigen().transpose();
  // The nearest rotation to the given rows (polar decomposition), so scaled or slightly skewed rows still
  // give the orientation they describe.
  const Eigen::JacobiSVD<Eigen::Matrix3d> svd(m, Eigen::ComputeFullU | Eigen::ComputeFullV);
  Eigen::Matrix3d rotation = svd.matrixU() * svd.matrixV().transpose();
  if (rotation.determinant() < 0.0) {
    Eigen::Matrix3d u = svd.matrixU();
    u.col(2) = -u.col(2);
    rotation = u * svd.matrixV().transpose();
  }
  m_value = normalizedOrIdentity(Eigen::Quaterniond(rotation));
}

RkOrientation RkOrientation::interpolation(const RkOrientation& from, const RkOrientation& to, RkReal s) {
  // Eigen's slerp already takes the shorter arc.
  return RkOrientation(from.m_value.slerp(s, to.m_value));
}

void RkOrientation::angleAxisBetween(const RkOrientation& a, const RkOrientation& b, RkReal& angle,
                                     RkVector& axis) {
  Eigen::Quaterniond delta = b.m_value * a.m_value.conjugate();
  if (delta.w() < 0.0) delta.coeffs() = -delta.coeffs();
  const RkReal sine = delta.vec().norm();
  angle = 2.0 * std::atan2(sine, delta.w());
  axis = sine > 0.0 ? RkVector(delta.vec() / sine) : RkVector::xVector();
}

RkReal RkOrientation::angle() const {
  return 2.0 * std::atan2(m_value.vec().norm(), std::fabs(m_value.w()));
}

bool RkOrientation::approxEq(const RkOrientation& other, RkReal tolerance) const {
  RkReal angle = 0.0;
  RkVector axis;
  angleAxisBetween(*this, other, angle, axis);
  return angle <= tolerance;
}
