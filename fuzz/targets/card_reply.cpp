// SPDX-License-Identifier: MIT
// The card application's reply, output.txt, read back by a card sale. Only a
// result code below 4 approves; a reply with none must never do so.
#include <cstdio>
#include <cstdlib>

#include "core/state.h"
#include "core/text.h"
#include "fuzz_support.h"
#include "platform/files.h"
#include "targets.h"
#include "tender/eft.h"

namespace tilo::fuzz {
namespace {

// The card application: answers the request with the input as soon as the
// till starts waiting.
class CardApplication : public ScriptedPlatform {
 public:
  CardApplication(std::string folder, std::string_view reply)
      : folder_(std::move(folder)), reply_(reply) {}
  bool wait(const std::string& text, const std::string& title, int interval_ms,
            const std::function<bool()>& poll) override {
    PutFile(folder_ + "/output.txt", reply_);
    return ScriptedPlatform::wait(text, title, interval_ms, poll);
  }

 private:
  std::string folder_;
  std::string_view reply_;
};

}  // namespace

void FuzzCardReply(const uint8_t* data, size_t size) {
  const std::string_view reply(reinterpret_cast<const char*>(data), size);
  const std::string folder = RunFolder() + "card";
  StartRun(std::make_unique<CardApplication>(folder, reply));
  MakeFolder(folder);
  SettingsRecord& s = G().settings;
  SetField(s.eft_folder, folder);
  s.eft_active = 1;
  const bool approved = Eftexchange(12.34f);
  const std::optional<int> code = Eftreplycode(std::string(reply));
  if (approved != (code && *code < 4)) {
    std::fputs("tilo fuzz: the sale's approval and the reply's code disagree\n", stderr);
    std::abort();
  }
}

}  // namespace tilo::fuzz
