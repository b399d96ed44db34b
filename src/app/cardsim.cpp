// SPDX-License-Identifier: MIT
// tilo-cardsim: a stand-in for the card application, so that a shop can try its
// card set-up without a card terminal. It watches the card folder, takes each
// request (input.txt) once it is complete, keeps a copy of it, and after a delay
// writes a reply (output.txt) of the kind asked for on the command line. It
// prints everything that passes.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

const char kUsage[] =
    "usage: tilo-cardsim FOLDER [--delay MS] [--count N] [--keep FOLDER] [--reply KIND]...\n"
    "\n"
    "Answers the till's card requests in FOLDER (the card folder of \"Card processing\n"
    "setup\"). Each request gets the next reply KIND; the last one repeats. KIND is:\n"
    "  CODE        a result code, e.g. 0 (approved), 4 (declined), 16 (capture card)\n"
    "  raw:TEXT    TEXT as it stands, \\n for a line feed\n"
    "  nokey3      a reply without a result code\n"
    "  empty       an empty reply\n"
    "  split:CODE  the reply for CODE written in two pieces 100 ms apart\n"
    "  never       take the request and never answer\n"
    "  leave       leave the request where it is and never answer\n"
    "Default: --delay 1000 --reply 0; requests are kept in FOLDER/requests.\n";

volatile std::sig_atomic_t stop = 0;

void Stop(int) {
  stop = 1;
}

void Sleep(int ms) {
  std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

bool Read(const std::string& path, std::string* bytes) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::ostringstream all;
  all << in.rdbuf();
  *bytes = all.str();
  return true;
}

bool Write(const std::string& path, const std::string& bytes, int flags) {
  const int fd = open(path.c_str(), O_WRONLY | O_CREAT | flags, 0600);
  if (fd < 0) return false;
  const bool ok = write(fd, bytes.data(), bytes.size()) == ssize_t(bytes.size());
  fsync(fd);
  return close(fd) == 0 && ok;
}

// Line feeds shown as "\n", so that a request prints on one line.
std::string Shown(const std::string& bytes) {
  std::string out;
  for (char c : bytes) {
    if (c == '\n')
      out += "\\n";
    else if (c == '\r')
      out += "\\r";
    else
      out += c;
  }
  return out;
}

std::string Unescaped(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 1 < text.size() && text[i + 1] == 'n') {
      out += '\n';
      ++i;
    } else {
      out += text[i];
    }
  }
  return out;
}

// The value of a key in a request, "" when absent.
std::string Value(const std::string& request, const std::string& key) {
  std::istringstream lines(request);
  std::string line;
  while (std::getline(lines, line))
    if (line.rfind(key + "=", 0) == 0) return line.substr(key.size() + 1);
  return "";
}

// A reply of the sort a card application writes: the till's reference, the
// result, an authorisation number, the end mark.
std::string Answer(const std::string& request, const std::string& code) {
  return "1=" + Value(request, "1") + "\r\n3=" + code + "\r\n10=SIM" + Value(request, "1") +
         "\r\n99=0\r\n";
}

struct Options {
  std::string folder;
  std::string keep;
  int delay_ms = 1000;
  long count = -1;
  std::vector<std::string> replies;
};

bool Parse(int argc, char** argv, Options* o) {
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    const bool has_value = i + 1 < argc;
    if (arg == "--delay" && has_value)
      o->delay_ms = std::atoi(argv[++i]);
    else if (arg == "--count" && has_value)
      o->count = std::atol(argv[++i]);
    else if (arg == "--keep" && has_value)
      o->keep = argv[++i];
    else if (arg == "--reply" && has_value)
      o->replies.push_back(argv[++i]);
    else if (!arg.empty() && arg[0] != '-' && o->folder.empty())
      o->folder = arg;
    else
      return false;
  }
  if (o->folder.empty()) return false;
  if (o->keep.empty()) o->keep = o->folder + "/requests";
  if (o->replies.empty()) o->replies.push_back("0");
  return true;
}

// Answers one request with reply `kind`; false for a kind it does not know.
bool Reply(const Options& o, const std::string& request, const std::string& kind) {
  const std::string output = o.folder + "/output.txt";
  std::string text;
  if (kind == "never" || kind == "leave") {
    std::printf("  no reply\n");
    return true;
  }
  if (kind == "empty") {
    text = "";
  } else if (kind == "nokey3") {
    text = "1=" + Value(request, "1") + "\r\n10=SIM\r\n99=0\r\n";
  } else if (kind.rfind("raw:", 0) == 0) {
    text = Unescaped(kind.substr(4));
  } else if (kind.rfind("split:", 0) == 0) {
    text = Answer(request, kind.substr(6));
  } else if (!kind.empty() && kind.find_first_not_of("0123456789") == std::string::npos) {
    text = Answer(request, kind);
  } else {
    return false;
  }
  Sleep(o.delay_ms);
  if (kind.rfind("split:", 0) == 0) {
    // Cut just after the result's "3=": read too early, the reply has no code yet.
    const size_t mark = text.find("\n3=");
    const size_t half = mark == std::string::npos ? text.size() / 2 : mark + 3;
    Write(output, text.substr(0, half), O_TRUNC);
    std::printf("reply (first piece): %s\n", Shown(text.substr(0, half)).c_str());
    std::fflush(stdout);
    Sleep(100);
    Write(output, text.substr(half), O_APPEND);
    std::printf("reply (second piece): %s\n", Shown(text.substr(half)).c_str());
  } else {
    Write(output, text, O_TRUNC);
    std::printf("reply: %s\n", Shown(text).c_str());
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  // The card folder sits in the shop, whose files are the user's alone.
  umask(077);
  Options o;
  if (!Parse(argc, argv, &o)) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  for (const std::string& kind : o.replies) {
    const bool known = kind == "never" || kind == "leave" || kind == "empty" || kind == "nokey3" ||
                       kind.rfind("raw:", 0) == 0 || kind.rfind("split:", 0) == 0 ||
                       (!kind.empty() && kind.find_first_not_of("0123456789") == std::string::npos);
    if (!known) {
      std::fprintf(stderr, "tilo-cardsim: unknown reply %s\n%s", kind.c_str(), kUsage);
      return 2;
    }
  }
  struct stat st {};
  if (stat(o.folder.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) {
    std::fprintf(stderr, "tilo-cardsim: %s is not a folder\n", o.folder.c_str());
    return 1;
  }
  mkdir(o.keep.c_str(), 0700);
  std::signal(SIGTERM, Stop);
  std::signal(SIGINT, Stop);
  std::printf("watching %s\n", o.folder.c_str());
  std::fflush(stdout);

  const std::string input = o.folder + "/input.txt";
  long served = 0;
  while (!stop && (o.count < 0 || served < o.count)) {
    std::string request;
    // The request counts once it is whole: it ends with the end mark.
    const bool whole = Read(input, &request) && request.size() >= 4 &&
                       request.compare(request.size() - 4, 4, "99=0") == 0;
    if (!whole) {
      Sleep(50);
      continue;
    }
    const std::string& kind =
        o.replies[size_t(served) < o.replies.size() ? size_t(served) : o.replies.size() - 1];
    ++served;
    char name[64];
    std::snprintf(name, sizeof name, "/request-%04ld.txt", served);
    Write(o.keep + name, request, O_TRUNC);
    std::printf("request %ld: %s\n", served, Shown(request).c_str());
    std::fflush(stdout);
    if (kind == "leave") {
      std::printf("  left in place, no reply\n");
      std::fflush(stdout);
      // Wait until the till takes it back or another request replaces it.
      std::string still;
      while (!stop && Read(input, &still) && still == request) Sleep(50);
      continue;
    }
    unlink(input.c_str());
    Reply(o, request, kind);
    std::fflush(stdout);
  }
  return 0;
}
