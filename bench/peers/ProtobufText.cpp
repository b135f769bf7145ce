#include "peers/ProtobufText.h"

#include <google/protobuf/text_format.h>
#include <google/protobuf/util/message_differencer.h>
#include <text.pb.h>

namespace Bench {

struct ProtobufText::State {
  explicit State(std::unique_ptr<google::protobuf::Message> first)
      : message(std::move(first)), parsed(message->New()) {
    printer.SetSingleLineMode(true);
    printer.PrintToString(*message, &text);
  }

  google::protobuf::TextFormat::Printer printer;
  google::protobuf::TextFormat::Parser parser;
  std::unique_ptr<google::protobuf::Message> message;
  std::unique_ptr<google::protobuf::Message> parsed;
  std::string text;
  std::string printed;
};

ProtobufText::ProtobufText(std::unique_ptr<State> state) : state_(std::move(state)) {}
ProtobufText::ProtobufText(ProtobufText&& other) noexcept = default;
ProtobufText::~ProtobufText() = default;

ProtobufText ProtobufText::profileKey(int type, const std::string& name) {
  auto message = std::make_unique<BenchProtobuf::ProfileKey>();
  message->set_type(static_cast<BenchProtobuf::ProfileType>(type));
  message->set_name(name);
  return ProtobufText(std::make_unique<State>(std::move(message)));
}

ProtobufText ProtobufText::trafficRates(unsigned long long out, unsigned long long in,
                                        double time) {
  auto message = std::make_unique<BenchProtobuf::TrafficRates>();
  message->set_outbitsrate(out);
  message->set_inbitsrate(in);
  message->set_statsupdatetime(time);
  return ProtobufText(std::make_unique<State>(std::move(message)));
}

const std::string& ProtobufText::print() {
  state_->printer.PrintToString(*state_->message, &state_->printed);
  return state_->printed;
}

bool ProtobufText::parse() {
  return state_->parser.ParseFromString(state_->text, state_->parsed.get());
}

const std::string& ProtobufText::text() const { return state_->text; }

bool ProtobufText::isEqual() const {
  return google::protobuf::util::MessageDifferencer::Equals(*state_->message, *state_->parsed);
}

} // namespace Bench
