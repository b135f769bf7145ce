#include "peers/QtReplicas.h"

#include "rep_Unit_replica.h"
#include "rep_Unit_source.h"

#include <QCoreApplication>
#include <QRemoteObjectHost>
#include <QRemoteObjectNode>
#include <QTimer>

#include <memory>
#include <unistd.h>
#include <vector>

namespace Bench {

namespace {

int noArguments = 1;
char program[] = "bench";
char* programOnly[] = {program, nullptr};

QString nameOf(std::size_t number) {
  return QString::asprintf("profile-%07zu-p%03zu", number, number % 8);
}

QUrl url(const std::string& address) { return QUrl(QString::fromStdString(address)); }

using Replicas = std::vector<std::unique_ptr<UnitReplica>>;

/// Acquires the replicas and calls `done` when the last of them is initialised.
Replicas acquired(QRemoteObjectNode& node, std::size_t sources, std::function<void()> done) {
  Replicas replicas;
  const auto left = std::make_shared<std::size_t>(sources);
  for (std::size_t i = 0; i < sources; ++i) {
    replicas.emplace_back(node.acquire<UnitReplica>(nameOf(i)));
    QObject::connect(replicas.back().get(), &UnitReplica::initialized, [left, done] {
      if (--*left == 0) {
        done();
      }
    });
  }
  return replicas;
}

} // namespace

std::string QtNode::address() {
  static int number = 0;
  return "local:bench-" + std::to_string(getpid()) + "-" + std::to_string(++number);
}

void QtNode::exportChanges(const std::string& address, std::size_t sources, std::size_t turn,
                           std::size_t count, const std::function<void()>& ready,
                           const std::function<bool()>& mayStart,
                           const std::function<bool()>& isOver) {
  QCoreApplication application(noArguments, programOnly);
  QRemoteObjectHost host(url(address));
  std::vector<std::unique_ptr<UnitSimpleSource>> units;
  for (std::size_t i = 0; i < sources; ++i) {
    units.push_back(std::make_unique<UnitSimpleSource>());
    units.back()->setName(nameOf(i));
    host.enableRemoting(units.back().get(), nameOf(i));
  }
  ready();
  std::size_t made = 0;
  bool isStarted = false;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] {
    if (isOver()) {
      application.quit();
      return;
    }
    if (!isStarted && mayStart()) {
      isStarted = true;
      timer.setInterval(0);
    }
    for (std::size_t i = 0; isStarted && i < turn && made < count; ++i) {
      ++made;
      units[made * 7919 % sources]->setGenId(static_cast<int>(made));
    }
    if (isStarted && made == count) {
      timer.setInterval(5); // which leaves the processor to the other end
    }
  });
  timer.start(5);
  QCoreApplication::exec();
}

std::size_t QtNode::mirrorChanges(const std::string& address, std::size_t sources,
                                  std::size_t count, const std::function<void()>& ready) {
  QCoreApplication application(noArguments, programOnly);
  QRemoteObjectNode node;
  node.connectToNode(url(address));
  std::size_t seen = 0;
  const Replicas replicas = acquired(node, sources, ready);
  for (const auto& replica : replicas) {
    QObject::connect(replica.get(), &UnitReplica::genIdChanged, [&](int value) {
      seen += value != 0 ? 1 : 0;
      if (static_cast<std::size_t>(value) == count) {
        application.quit();
      }
    });
  }
  QCoreApplication::exec();
  return seen;
}

bool QtNode::mirrorAll(const std::string& address, std::size_t sources) {
  QCoreApplication application(noArguments, programOnly);
  QRemoteObjectNode node;
  node.connectToNode(url(address));
  const Replicas replicas = acquired(node, sources, [&] { application.quit(); });
  QCoreApplication::exec();
  for (std::size_t i = 0; i < sources; ++i) {
    if (replicas[i]->name() != nameOf(i)) {
      return false;
    }
  }
  return true;
}

} // namespace Bench
