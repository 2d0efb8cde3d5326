#include "simulation/RkKinematicChain.h"

#include <console_bridge/console.h>
#include <urdf_parser/urdf_parser.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <kdl/chain.hpp>
#include <kdl/chainfksolverpos_recursive.hpp>
#include <kdl/chainjnttojacsolver.hpp>
#include <kdl/jacobian.hpp>
#include <kdl/jntarray.hpp>
#include <mutex>
#include <sstream>

struct RkKinematicChain::Impl {
  // One segment for the single-pass evaluation: the link frame is pre * motion(q) * post in the parent link's
  // frame, motion a rotation about or a translation along `axis` (unit, in pre's frame), or none.
  struct Step {
    Eigen::Matrix3d preR, postR;
    Eigen::Vector3d preP, postP, axis;
    int joint;  // index of the movable joint, -1 for a fixed segment
    bool prismatic;
  };

  KDL::Chain chain;
  std::vector<Step> steps;
  std::vector<std::string> jointNames;
  std::vector<JointType> jointTypes;
  Eigen::VectorXd lower, upper, velocity;
  std::vector<std::string> linkNames;  // the base, then the child link of each segment
  std::vector<int> jointLink;          // link index moved by each joint

  // Solvers refer to `chain`, so they are rebuilt for every copy.
  std::unique_ptr<KDL::ChainFkSolverPos_recursive> fk;
  std::unique_ptr<KDL::ChainJntToJacSolver> jacobian;
  mutable KDL::JntArray q;
  mutable KDL::Jacobian jac;
  mutable KDL::Frame frame;
  mutable std::vector<Eigen::Vector3d> jointAxis, jointOrigin;  // in the base frame, while evaluating

  Impl() = default;
  Impl(const Impl& o)
      : chain(o.chain),
        steps(o.steps),
        jointNames(o.jointNames),
        jointTypes(o.jointTypes),
        lower(o.lower),
        upper(o.upper),
        velocity(o.velocity),
        linkNames(o.linkNames),
        jointLink(o.jointLink) {
    finish();
  }

  enum class Motion { None, Rotation, Translation };
  // Adds a segment ending in `link`, moved by joint `joint` (see Step), to both representations.
  void addSegment(const std::string& link, const std::string& joint, Motion motion, const KDL::Frame& pre,
                  const KDL::Vector& axis, const KDL::Frame& post) {
    if (motion == Motion::None) {
      chain.addSegment(KDL::Segment(link, KDL::Joint(joint, KDL::Joint::Fixed), pre * post));
    } else {
      // KDL wants the joint origin and axis in the parent's frame, and the tip at joint position zero.
      const KDL::Joint kdlJoint(joint, pre.p, pre.M * axis,
                                motion == Motion::Rotation ? KDL::Joint::RotAxis : KDL::Joint::TransAxis);
      chain.addSegment(KDL::Segment(link, kdlJoint, pre * post));
    }
    Step step;
    for (int r = 0; r < 3; ++r) {
      for (int c = 0; c < 3; ++c) {
        step.preR(r, c) = pre.M(r, c);
        step.postR(r, c) = post.M(r, c);
      }
      step.preP(r) = pre.p(r);
      step.postP(r) = post.p(r);
      step.axis(r) = axis(r);
    }
    step.joint = motion == Motion::None ? -1 : static_cast<int>(jointNames.size());
    step.prismatic = motion == Motion::Translation;
    steps.push_back(step);
    linkNames.push_back(link);
    if (motion != Motion::None) {
      jointLink.push_back(static_cast<int>(linkNames.size()) - 1);
      jointNames.push_back(joint);
    }
  }

  // Placement and Jacobian of link `link`, in one pass over the first `link` segments.
  void evaluate(const Eigen::Ref<const Eigen::VectorXd>& q, int link, Eigen::Isometry3d& out,
                Eigen::Ref<Eigen::MatrixXd>& jacobian) const {
    Eigen::Matrix3d r = Eigen::Matrix3d::Identity();
    Eigen::Vector3d p = Eigen::Vector3d::Zero();
    int joints = 0;
    for (int k = 0; k < link; ++k) {
      const Step& s = steps[k];
      p += r * s.preP;
      r = r * s.preR;
      if (s.joint >= 0) {
        const Eigen::Vector3d axis = r * s.axis;
        jointAxis[s.joint] = axis;
        jointOrigin[s.joint] = p;
        joints = s.joint + 1;
        if (s.prismatic)
          p += q(s.joint) * axis;
        else
          r = r * Eigen::AngleAxisd(q(s.joint), s.axis).toRotationMatrix();
      }
      p += r * s.postP;
      r = r * s.postR;
    }
    out.linear() = r;
    out.translation() = p;
    out.makeAffine();
    for (int j = 0; j < static_cast<int>(jacobian.cols()); ++j) {
      if (j >= joints) {
        jacobian.col(j).setZero();
      } else if (steps[jointLink[j] - 1].prismatic) {
        jacobian.block<3, 1>(0, j) = jointAxis[j];
        jacobian.block<3, 1>(3, j).setZero();
      } else {
        jacobian.block<3, 1>(0, j) = jointAxis[j].cross(p - jointOrigin[j]);
        jacobian.block<3, 1>(3, j) = jointAxis[j];
      }
    }
  }

  void finish() {
    jointAxis.resize(jointNames.size());
    jointOrigin.resize(jointNames.size());
    fk = std::make_unique<KDL::ChainFkSolverPos_recursive>(chain);
    jacobian = std::make_unique<KDL::ChainJntToJacSolver>(chain);
    q.resize(chain.getNrOfJoints());
    jac.resize(chain.getNrOfJoints());
  }

  bool loadJoints(const Eigen::Ref<const Eigen::VectorXd>& values) const {
    if (values.size() != q.rows()) return false;
    q.data = values;
    return true;
  }
};

namespace {

KDL::Frame toKdl(const Eigen::Isometry3d& t) {
  const Eigen::Matrix3d& r = t.linear();
  return KDL::Frame(
      KDL::Rotation(r(0, 0), r(0, 1), r(0, 2), r(1, 0), r(1, 1), r(1, 2), r(2, 0), r(2, 1), r(2, 2)),
      KDL::Vector(t.translation().x(), t.translation().y(), t.translation().z()));
}

void toEigen(const KDL::Frame& f, Eigen::Isometry3d& out) {
  out.setIdentity();
  for (int r = 0; r < 3; ++r) {
    for (int c = 0; c < 3; ++c) out.linear()(r, c) = f.M(r, c);
    out.translation()(r) = f.p(r);
  }
}

bool isRigid(const Eigen::Isometry3d& t) {
  if (!t.matrix().allFinite()) return false;
  const Eigen::Matrix3d r = t.linear();
  return (r.transpose() * r - Eigen::Matrix3d::Identity()).norm() < 1e-6 && r.determinant() > 0.0;
}

// One line: newlines and tabs become blanks, surrounding blanks are dropped.
std::string oneLine(std::string text) {
  for (char& c : text)
    if (c == '\n' || c == '\r' || c == '\t') c = ' ';
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return std::string();
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Collects what the URDF parser reports instead of letting it write to the console.
class ParserMessages : public console_bridge::OutputHandler {
 public:
  void log(const std::string& text, console_bridge::LogLevel level, const char*, int) override {
    if (level >= console_bridge::CONSOLE_BRIDGE_LOG_ERROR && firstError.empty()) firstError = oneLine(text);
  }
  std::string firstError;
};

urdf::ModelInterfaceSharedPtr parseQuietly(const std::string& text, std::string& message) {
  // The parser's message handler is process-wide; serialise our use of it.
  static std::mutex mutex;
  std::lock_guard<std::mutex> lock(mutex);
  ParserMessages messages;
  const console_bridge::LogLevel level = console_bridge::getLogLevel();
  console_bridge::setLogLevel(console_bridge::CONSOLE_BRIDGE_LOG_ERROR);
  console_bridge::useOutputHandler(&messages);
  urdf::ModelInterfaceSharedPtr model;
  try {
    model = urdf::parseURDF(text);
  } catch (const std::exception& e) {
    messages.firstError = oneLine(e.what());
    model.reset();
  }
  console_bridge::restorePreviousOutputHandler();
  console_bridge::setLogLevel(level);
  message = messages.firstError;
  return model;
}

KDL::Frame toKdl(const urdf::Pose& pose) {
  return KDL::Frame(
      KDL::Rotation::Quaternion(pose.rotation.x, pose.rotation.y, pose.rotation.z, pose.rotation.w),
      KDL::Vector(pose.position.x, pose.position.y, pose.position.z));
}

bool finitePose(const urdf::Pose& p) {
  return std::isfinite(p.position.x) && std::isfinite(p.position.y) && std::isfinite(p.position.z) &&
         std::isfinite(p.rotation.x) && std::isfinite(p.rotation.y) && std::isfinite(p.rotation.z) &&
         std::isfinite(p.rotation.w);
}

// The deepest links below `root`, counting joints of every type.
void deepestLinks(const urdf::LinkConstSharedPtr& root, std::vector<std::string>& names) {
  struct Item {
    urdf::LinkConstSharedPtr link;
    int depth;
  };
  std::vector<Item> stack{{root, 0}};
  int best = -1;
  while (!stack.empty()) {
    const Item item = stack.back();
    stack.pop_back();
    if (item.link->child_links.empty()) {
      if (item.depth > best) {
        best = item.depth;
        names.clear();
      }
      if (item.depth == best) names.push_back(item.link->name);
    }
    for (const urdf::LinkSharedPtr& child : item.link->child_links)
      if (child) stack.push_back({child, item.depth + 1});
  }
}

}  // namespace

RkKinematicChain::RkKinematicChain(std::unique_ptr<Impl> impl) : m_impl(std::move(impl)) {}
RkKinematicChain::RkKinematicChain(const RkKinematicChain& other)
    : m_impl(std::make_unique<Impl>(*other.m_impl)) {}
RkKinematicChain& RkKinematicChain::operator=(const RkKinematicChain& other) {
  if (this != &other) m_impl = std::make_unique<Impl>(*other.m_impl);
  return *this;
}
RkKinematicChain::~RkKinematicChain() = default;

std::unique_ptr<RkKinematicChain> RkKinematicChain::fromUrdfFile(const std::string& path,
                                                                 const std::string& baseLink,
                                                                 const std::string& tipLink,
                                                                 std::string& error) {
  // Same ceiling as the XML reader: a robot description is never this large.
  constexpr std::uintmax_t maxSize = 64u << 20;
  std::error_code ec;
  if (!std::filesystem::exists(path, ec)) {
    error = path + ": no such file";
    return nullptr;
  }
  if (!std::filesystem::is_regular_file(path, ec)) {
    error = path + ": not a regular file";
    return nullptr;
  }
  const std::uintmax_t size = std::filesystem::file_size(path, ec);
  if (ec || size > maxSize) {
    error = path + (ec ? ": cannot read its size" : ": larger than 64 MiB");
    return nullptr;
  }
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  if (!in || !(text << in.rdbuf())) {
    // An empty file also lands here; it is not a URDF either.
    error = path + (in ? ": empty file" : ": cannot be opened");
    return nullptr;
  }
  return fromUrdfString(text.str(), path, baseLink, tipLink, error);
}

std::unique_ptr<RkKinematicChain> RkKinematicChain::fromUrdfString(const std::string& urdf,
                                                                   const std::string& sourceName,
                                                                   const std::string& baseLink,
                                                                   const std::string& tipLink,
                                                                   std::string& error) {
  try {
    std::string message;
    const urdf::ModelInterfaceSharedPtr model = parseQuietly(urdf, message);
    if (!model) {
      error = sourceName + ": not a valid URDF" + (message.empty() ? std::string() : " (" + message + ")");
      return nullptr;
    }
    // The parser lets a link be the child of two joints; a tree cannot.
    for (const auto& entry : model->joints_) {
      const urdf::LinkConstSharedPtr child = model->getLink(entry.second->child_link_name);
      if (child && child->parent_joint && child->parent_joint->name != entry.first) {
        error = sourceName + ": link '" + child->name + "' is the child of more than one joint";
        return nullptr;
      }
    }
    urdf::LinkConstSharedPtr base = baseLink.empty() ? model->getRoot() : model->getLink(baseLink);
    if (!base) {
      error = sourceName + ": no link named '" + baseLink + "'";
      return nullptr;
    }
    urdf::LinkConstSharedPtr tip;
    if (tipLink.empty()) {
      std::vector<std::string> deepest;
      deepestLinks(base, deepest);
      if (deepest.size() != 1) {
        std::string list;
        for (const std::string& name : deepest) list += (list.empty() ? "" : ", ") + name;
        error = sourceName + ": several deepest links below '" + base->name + "' (" + list +
                "); name the tip link";
        return nullptr;
      }
      tip = model->getLink(deepest.front());
    } else {
      tip = model->getLink(tipLink);
      if (!tip) {
        error = sourceName + ": no link named '" + tipLink + "'";
        return nullptr;
      }
    }

    // Walk up from the tip; the joints come out tip first.
    std::vector<urdf::JointConstSharedPtr> joints;
    for (urdf::LinkConstSharedPtr link = tip; link->name != base->name;) {
      const urdf::JointConstSharedPtr joint = link->parent_joint;
      urdf::LinkConstSharedPtr parent = joint ? model->getLink(joint->parent_link_name) : nullptr;
      if (!parent) {
        error = sourceName + ": link '" + base->name + "' is not an ancestor of '" + tip->name + "'";
        return nullptr;
      }
      joints.push_back(joint);
      link = parent;
    }

    auto impl = std::make_unique<Impl>();
    impl->linkNames.push_back(base->name);
    std::vector<double> lower, upper, velocity;
    for (auto it = joints.rbegin(); it != joints.rend(); ++it) {
      const urdf::Joint& joint = **it;
      const std::string where = sourceName + ": joint '" + joint.name + "'";
      if (!finitePose(joint.parent_to_joint_origin_transform)) {
        error = where + " has a non-finite origin";
        return nullptr;
      }
      const KDL::Frame origin = toKdl(joint.parent_to_joint_origin_transform);
      if (joint.type == urdf::Joint::FIXED) {
        impl->addSegment(joint.child_link_name, joint.name, Impl::Motion::None, origin, KDL::Vector::Zero(),
                         KDL::Frame::Identity());
        continue;
      }
      if (joint.type != urdf::Joint::REVOLUTE && joint.type != urdf::Joint::CONTINUOUS &&
          joint.type != urdf::Joint::PRISMATIC) {
        error = where + " is neither revolute, continuous, prismatic nor fixed";
        return nullptr;
      }
      if (joint.mimic) {
        error = where + " mimics another joint, which a serial chain cannot follow";
        return nullptr;
      }
      const KDL::Vector axis(joint.axis.x, joint.axis.y, joint.axis.z);
      const double norm = axis.Norm();
      if (!std::isfinite(norm) || norm < 1e-9) {
        error = where + " has no usable axis";
        return nullptr;
      }
      // The URDF axis is given in the joint frame, which is the child link's frame.
      const bool prismatic = joint.type == urdf::Joint::PRISMATIC;
      impl->addSegment(joint.child_link_name, joint.name,
                       prismatic ? Impl::Motion::Translation : Impl::Motion::Rotation, origin, axis / norm,
                       KDL::Frame::Identity());

      double lo = -std::numeric_limits<double>::infinity(), hi = std::numeric_limits<double>::infinity();
      double v = std::numeric_limits<double>::infinity();
      if (joint.type == urdf::Joint::CONTINUOUS) {
        impl->jointTypes.push_back(JointType::Continuous);
      } else {
        impl->jointTypes.push_back(prismatic ? JointType::Prismatic : JointType::Revolute);
        if (!joint.limits) {
          error = where + " has no limits";
          return nullptr;
        }
        lo = joint.limits->lower;
        hi = joint.limits->upper;
        if (!(lo <= hi)) {
          error = where + " has a lower limit above its upper limit";
          return nullptr;
        }
      }
      // A missing or zero velocity limit means the description does not bound the speed.
      if (joint.limits && joint.limits->velocity > 0.0) v = joint.limits->velocity;
      lower.push_back(lo);
      upper.push_back(hi);
      velocity.push_back(v);
    }
    if (impl->jointNames.empty()) {
      error = sourceName + ": no movable joint between '" + base->name + "' and '" + tip->name + "'";
      return nullptr;
    }
    impl->lower = Eigen::Map<Eigen::VectorXd>(lower.data(), lower.size());
    impl->upper = Eigen::Map<Eigen::VectorXd>(upper.data(), upper.size());
    impl->velocity = Eigen::Map<Eigen::VectorXd>(velocity.data(), velocity.size());
    impl->finish();
    return std::unique_ptr<RkKinematicChain>(new RkKinematicChain(std::move(impl)));
  } catch (const std::exception& e) {
    error = sourceName + ": " + oneLine(e.what());
    return nullptr;
  }
}

std::unique_ptr<RkKinematicChain> RkKinematicChain::fromDh(const std::vector<DhJoint>& table,
                                                           const Eigen::Isometry3d& base,
                                                           const Eigen::Isometry3d& tool,
                                                           const std::string& sourceName,
                                                           std::string& error) {
  try {
    if (table.empty()) {
      error = sourceName + ": the DH table has no joint";
      return nullptr;
    }
    if (!isRigid(base) || !isRigid(tool)) {
      error = sourceName + ": the base or tool transform is not a rigid motion";
      return nullptr;
    }
    auto impl = std::make_unique<Impl>();
    const int n = static_cast<int>(table.size());
    impl->lower.resize(n);
    impl->upper.resize(n);
    impl->velocity.resize(n);
    impl->linkNames = {"base"};
    impl->addSegment("link0", "base_to_link0", Impl::Motion::None, toKdl(base), KDL::Vector::Zero(),
                     KDL::Frame::Identity());
    for (int i = 0; i < n; ++i) {
      const DhJoint& row = table[i];
      const std::string name = row.name.empty() ? "joint" + std::to_string(i + 1) : row.name;
      if (!std::isfinite(row.a) || !std::isfinite(row.d) || !std::isfinite(row.alpha) ||
          !std::isfinite(row.theta)) {
        error = sourceName + ": joint '" + name + "' has a non-finite DH parameter";
        return nullptr;
      }
      if (std::isnan(row.lower) || std::isnan(row.upper) || !(row.lower <= row.upper) ||
          !(row.maxVelocity > 0.0)) {
        error = sourceName + ": joint '" + name + "' has invalid limits";
        return nullptr;
      }
      // The joint turns about (slides along) z of the previous DH frame, before this row's transform.
      impl->addSegment("link" + std::to_string(i + 1), name,
                       row.prismatic ? Impl::Motion::Translation : Impl::Motion::Rotation,
                       KDL::Frame::Identity(), KDL::Vector(0, 0, 1),
                       KDL::Frame::DH(row.a, row.alpha, row.d, row.theta));
      impl->jointTypes.push_back(row.prismatic                                    ? JointType::Prismatic
                                 : std::isinf(row.lower) && std::isinf(row.upper) ? JointType::Continuous
                                                                                  : JointType::Revolute);
      impl->lower(i) = row.lower;
      impl->upper(i) = row.upper;
      impl->velocity(i) = row.maxVelocity;
    }
    impl->addSegment("tool", "link_to_tool", Impl::Motion::None, toKdl(tool), KDL::Vector::Zero(),
                     KDL::Frame::Identity());
    impl->finish();
    return std::unique_ptr<RkKinematicChain>(new RkKinematicChain(std::move(impl)));
  } catch (const std::exception& e) {
    error = sourceName + ": " + oneLine(e.what());
    return nullptr;
  }
}

int RkKinematicChain::jointCount() const {
  return static_cast<int>(m_impl->jointNames.size());
}
const std::vector<std::string>& RkKinematicChain::jointNames() const {
  return m_impl->jointNames;
}
const std::vector<RkKinematicChain::JointType>& RkKinematicChain::jointTypes() const {
  return m_impl->jointTypes;
}
const Eigen::VectorXd& RkKinematicChain::lowerLimits() const {
  return m_impl->lower;
}
const Eigen::VectorXd& RkKinematicChain::upperLimits() const {
  return m_impl->upper;
}
const Eigen::VectorXd& RkKinematicChain::velocityLimits() const {
  return m_impl->velocity;
}
const std::vector<std::string>& RkKinematicChain::linkNames() const {
  return m_impl->linkNames;
}

bool RkKinematicChain::setJointLimits(int i, double lower, double upper, double maxVelocity) {
  if (i < 0 || i >= jointCount() || std::isnan(lower) || std::isnan(upper) || !(lower <= upper) ||
      !(maxVelocity > 0.0))
    return false;
  m_impl->lower(i) = lower;
  m_impl->upper(i) = upper;
  m_impl->velocity(i) = maxVelocity;
  return true;
}

int RkKinematicChain::linkIndex(const std::string& name) const {
  const std::vector<std::string>& links = m_impl->linkNames;
  for (size_t i = 0; i < links.size(); ++i)
    if (links[i] == name) return static_cast<int>(i);
  return -1;
}

int RkKinematicChain::jointLinkIndex(int i) const {
  return i >= 0 && i < jointCount() ? m_impl->jointLink[i] : -1;
}

bool RkKinematicChain::tipPlacement(const Eigen::Ref<const Eigen::VectorXd>& q,
                                    Eigen::Isometry3d& out) const {
  return linkPlacement(q, static_cast<int>(m_impl->linkNames.size()) - 1, out);
}

bool RkKinematicChain::linkPlacement(const Eigen::Ref<const Eigen::VectorXd>& q, int link,
                                     Eigen::Isometry3d& out) const {
  // Link k is the end of segment k-1, so the solver runs over the first k segments.
  if (link < 0 || link >= static_cast<int>(m_impl->linkNames.size()) || !m_impl->loadJoints(q)) return false;
  if (m_impl->fk->JntToCart(m_impl->q, m_impl->frame, link) < 0) return false;
  toEigen(m_impl->frame, out);
  return true;
}

bool RkKinematicChain::linkPlacement(const Eigen::Ref<const Eigen::VectorXd>& q, const std::string& link,
                                     Eigen::Isometry3d& out) const {
  return linkPlacement(q, linkIndex(link), out);
}

bool RkKinematicChain::tipJacobian(const Eigen::Ref<const Eigen::VectorXd>& q,
                                   Eigen::Ref<Eigen::MatrixXd> out) const {
  return linkJacobian(q, static_cast<int>(m_impl->linkNames.size()) - 1, out);
}

bool RkKinematicChain::linkJacobian(const Eigen::Ref<const Eigen::VectorXd>& q, int link,
                                    Eigen::Ref<Eigen::MatrixXd> out) const {
  if (link < 0 || link >= static_cast<int>(m_impl->linkNames.size()) || out.rows() != 6 ||
      out.cols() != jointCount() || !m_impl->loadJoints(q))
    return false;
  if (m_impl->jacobian->JntToJac(m_impl->q, m_impl->jac, link) < 0) return false;
  out = m_impl->jac.data;
  return true;
}

bool RkKinematicChain::linkPlacementAndJacobian(const Eigen::Ref<const Eigen::VectorXd>& q, int link,
                                                Eigen::Isometry3d& placement,
                                                Eigen::Ref<Eigen::MatrixXd> jacobian) const {
  if (link < 0 || link >= static_cast<int>(m_impl->linkNames.size()) || q.size() != jointCount() ||
      jacobian.rows() != 6 || jacobian.cols() != jointCount())
    return false;
  m_impl->evaluate(q, link, placement, jacobian);
  return true;
}

bool RkKinematicChain::dhFrame(const Eigen::Ref<const Eigen::VectorXd>& q, int i,
                               Eigen::Isometry3d& out) const {
  return linkPlacement(q, jointLinkIndex(i), out);
}
