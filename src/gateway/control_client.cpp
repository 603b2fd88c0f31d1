#include "gateway/control_client.h"

#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <map>
#include <mutex>
#include <thread>

#include "text/json.h"

namespace gw {
namespace {
constexpr size_t kReadChunk = 16 * 1024;
}  // namespace

struct ControlClient::Impl {
  std::chrono::milliseconds timeout;
  int fd = -1;
  std::thread reader;
  std::mutex writeMutex;  // one line at a time on the socket
  std::mutex mutex;       // guards what follows
  std::condition_variable arrived;
  bool connected = false;
  uint64_t nextId = 1;
  struct Waiter {
    std::optional<control::Answer> answer;
    std::function<void(control::Answer)> done;  // for a posted request
  };
  std::map<uint64_t, Waiter> waiting;  // by request id
  std::map<std::string, Json::Value> inspected;                 // the latest body by op

  void Read();
  bool Write(const std::string& line);
};

void ControlClient::Impl::Read() {
  std::string buffer;
  char chunk[kReadChunk];
  for (;;) {
    const ssize_t n = ::recv(fd, chunk, sizeof chunk, 0);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    buffer.append(chunk, static_cast<size_t>(n));
    size_t end;
    while ((end = buffer.find('\n')) != std::string::npos) {
      const std::string line = buffer.substr(0, end);
      buffer.erase(0, end + 1);
      if (auto answer = control::ParseAnswer(line)) {
        std::function<void(control::Answer)> done;
        {
          std::lock_guard lock(mutex);
          const auto id = answer->id.isUInt64() ? answer->id.asUInt64() : 0;
          auto it = waiting.find(id);
          if (it == waiting.end()) continue;
          if (it->second.done) {
            done = std::move(it->second.done);
            waiting.erase(it);
          } else {
            it->second.answer = std::move(*answer);
          }
        }
        if (done) {
          done(std::move(*answer));
          continue;
        }
      } else {
        Json::Value value;
        if (!txt::ParseJson(line, value) || !value.isObject() || !value[control::kOp].isString()) continue;
        const std::string op = value[control::kOp].asString();
        std::lock_guard lock(mutex);
        inspected[op] = value[op];
      }
      arrived.notify_all();
    }
  }
  std::vector<std::function<void(control::Answer)>> orphans;
  {
    std::lock_guard lock(mutex);
    connected = false;
    for (auto it = waiting.begin(); it != waiting.end();) {
      if (it->second.done) {
        orphans.push_back(std::move(it->second.done));
        it = waiting.erase(it);
      } else {
        ++it;
      }
    }
  }
  arrived.notify_all();
  control::Answer gone;
  gone.status = control::kStatusTimeout;
  for (auto& done : orphans) done(gone);
}

bool ControlClient::Impl::Write(const std::string& line) {
  std::lock_guard lock(writeMutex);
  const std::string out = line + "\n";
  size_t done = 0;
  while (done < out.size()) {
    const ssize_t n = ::send(fd, out.data() + done, out.size() - done, MSG_NOSIGNAL);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    done += static_cast<size_t>(n);
  }
  return true;
}

ControlClient::ControlClient(std::chrono::milliseconds timeout) : impl_(std::make_unique<Impl>()) {
  impl_->timeout = timeout;
}

ControlClient::~ControlClient() { Close(); }

bool ControlClient::Connect(const std::string& host, uint16_t port, std::string* error) {
  Close();
  addrinfo hints{};
  hints.ai_family = AF_UNSPEC;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const std::string service = std::to_string(port);
  if (const int failed = ::getaddrinfo(host.c_str(), service.c_str(), &hints, &found)) {
    if (error) *error = "cannot find " + host + ": " + ::gai_strerror(failed);
    return false;
  }
  int fd = -1;
  int reason = 0;
  for (addrinfo* a = found; a && fd < 0; a = a->ai_next) {
    fd = ::socket(a->ai_family, a->ai_socktype | SOCK_CLOEXEC, a->ai_protocol);
    if (fd < 0) continue;
    if (::connect(fd, a->ai_addr, a->ai_addrlen) != 0) {
      reason = errno;
      ::close(fd);
      fd = -1;
    }
  }
  ::freeaddrinfo(found);
  if (fd < 0) {
    if (error) *error = "cannot connect to " + host + ":" + service + ": " + std::strerror(reason);
    return false;
  }
  Impl& c = *impl_;
  c.fd = fd;
  c.connected = true;
  c.reader = std::thread([&c] { c.Read(); });
  return true;
}

control::Answer ControlClient::Send(const std::string& devIdno, const std::string& envelope,
                                    const std::string& param) {
  Impl& c = *impl_;
  control::Answer timedOut;
  timedOut.status = control::kStatusTimeout;
  uint64_t id;
  {
    std::lock_guard lock(c.mutex);
    if (!c.connected) return timedOut;
    id = c.nextId++;
    c.waiting.emplace(id, Impl::Waiter{});
  }
  control::Request request;
  request.id = Json::UInt64(id);
  request.dev = devIdno;
  request.envelope = envelope;
  request.param = param;
  const bool written = c.Write(control::RequestLine(request));
  std::unique_lock lock(c.mutex);
  if (written) {
    c.arrived.wait_for(lock, c.timeout, [&] { return c.waiting[id].answer.has_value() || !c.connected; });
  }
  std::optional<control::Answer> answer = std::move(c.waiting[id].answer);
  c.waiting.erase(id);
  return answer ? *answer : timedOut;
}

void ControlClient::Post(const std::string& devIdno, const std::string& envelope, const std::string& param,
                         std::function<void(control::Answer)> done) {
  Impl& c = *impl_;
  control::Answer gone;
  gone.status = control::kStatusTimeout;
  uint64_t id;
  {
    std::lock_guard lock(c.mutex);
    if (!c.connected) return done(gone);
    id = c.nextId++;
    c.waiting.emplace(id, Impl::Waiter{std::nullopt, std::move(done)});
  }
  control::Request request;
  request.id = Json::UInt64(id);
  request.dev = devIdno;
  request.envelope = envelope;
  request.param = param;
  if (c.Write(control::RequestLine(request))) return;
  std::function<void(control::Answer)> failed;
  {
    std::lock_guard lock(c.mutex);
    auto it = c.waiting.find(id);
    if (it == c.waiting.end()) return;  // the reader answered it as the connection went
    failed = std::move(it->second.done);
    c.waiting.erase(it);
  }
  failed(gone);
}

std::vector<control::Answer> SendPaced(ControlClient& client, const std::vector<control::Request>& requests,
                                       size_t outstanding) {
  std::vector<control::Answer> answers(requests.size());
  std::mutex mutex;
  std::condition_variable settled;
  size_t out = 0, done = 0;
  for (size_t i = 0; i < requests.size(); ++i) {
    {
      std::unique_lock lock(mutex);
      settled.wait(lock, [&] { return out < std::max<size_t>(1, outstanding); });
      ++out;
    }
    client.Post(requests[i].dev, requests[i].envelope, requests[i].param, [&, i](control::Answer answer) {
      std::lock_guard lock(mutex);
      answers[i] = std::move(answer);
      --out;
      ++done;
      settled.notify_all();
    });
  }
  std::unique_lock lock(mutex);
  settled.wait(lock, [&] { return done == requests.size(); });
  return answers;
}

Json::Value ControlClient::Inspect(const std::string& op) {
  Impl& c = *impl_;
  {
    std::lock_guard lock(c.mutex);
    if (!c.connected) return Json::Value();
    c.inspected.erase(op);
  }
  Json::Value line(Json::objectValue);
  line[control::kOp] = op;
  if (!c.Write(txt::WriteCompactJson(line))) return Json::Value();
  std::unique_lock lock(c.mutex);
  c.arrived.wait_for(lock, c.timeout, [&] { return c.inspected.count(op) > 0 || !c.connected; });
  auto it = c.inspected.find(op);
  return it == c.inspected.end() ? Json::Value() : it->second;
}

void ControlClient::Close() {
  Impl& c = *impl_;
  if (c.fd >= 0) ::shutdown(c.fd, SHUT_RDWR);
  if (c.reader.joinable()) c.reader.join();
  {
    std::lock_guard writing(c.writeMutex);
    if (c.fd >= 0) ::close(c.fd);
    c.fd = -1;
  }
  std::lock_guard lock(c.mutex);
  c.connected = false;
}

}  // namespace gw
