#include "generic/Access.h"
#include "peers/QtProperties.h"
#include "peers/QtStatus.h"

#include <QMetaProperty>
#include <QVariant>

#include <array>

namespace {

class Subject {
public:
  explicit Subject(unsigned listeners) : recorders_(listeners) {
    for (auto& recorder : recorders_) {
      recorder = std::make_unique<Bench::QtRecorder>();
      QObject::connect(object_.get(), &Bench::QtProperties::genIdChanged, recorder.get(),
                       &Bench::QtRecorder::onState, Qt::DirectConnection);
    }
  }

  std::uint64_t read() const { return property_.read(object_.get()).toUInt(); }
  void write(bool second) { property_.write(object_.get(), values_[second ? 1 : 0]); }

  std::uint64_t heard() const {
    std::uint64_t sum = 0;
    for (const auto& recorder : recorders_) {
      sum += recorder->heard;
    }
    return sum;
  }

private:
  const std::array<QVariant, 2> values_{QVariant(1U), QVariant(2U)};
  const std::unique_ptr<Bench::QtProperties> object_ = std::make_unique<Bench::QtProperties>();
  const QMetaProperty property_ =
      object_->metaObject()->property(object_->metaObject()->indexOfProperty("genId"));
  std::vector<std::unique_ptr<Bench::QtRecorder>> recorders_;
};

} // namespace

void Bench::registerAll() {
  operation("read", readAttribute<Subject>);
  operation("write", [](benchmark::State& state) { writeAttribute<Subject>(state, 0); });
  operation("write 1 listener", [](benchmark::State& state) { writeAttribute<Subject>(state, 1); });
  for (const char* name : {"totalIntfTrafficViolations", "genId"}) {
    operation(std::string("look up ") + name, [=](benchmark::State& state) {
      const QtProperties object;
      lookUpAttribute(state, [&] { return object.metaObject()->indexOfProperty(name); });
    });
  }
}
