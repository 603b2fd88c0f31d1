// The simulated platform's requests carried over the terminals' binary
// protocol, in one process: each request is encoded into frames as a gateway
// sends it, read back as a binary terminal reads it, answered by the
// simulated terminal, and the answer goes the same way back. What the pages
// see is what they would see through a gateway and a real terminal, so every
// script can run both ways.
#pragma once

#include <optional>
#include <string>

#include <json/value.h>

#include "host/ref/hostref.h"
#include "jt808/codec.h"
#include "jt808/frame.h"

namespace hostref::wire {

// The reply of a command that has no terminal message (the platform's own
// numbers): "Error" kNoTerminalMessage.
constexpr int kNoTerminalMessage = 120;
std::string NoTerminalMessageReply();

// A device's phone number in the frame header: its device number when that
// is decimal digits that fit the edition's field; nullopt otherwise.
std::optional<std::string> PhoneOf(const std::string& devIdno, jt808::Edition edition);
jt808::Edition EditionOf(const std::string& devIdno);

// The terminal's half: one whole command message (sub-packages put together)
// for the device, answered by its simulated terminal, as the answer message.
// A body the command's codec cannot read gets a general reply "message error".
jt808::Message TerminalAnswer(const std::string& devIdno, const jt808::Frame& command);

// The whole round trip of one request, as the platform's answer text.
std::optional<std::string> ThroughWire(const SentRequest& request);

// Makes the simulated platform answer every request through the wire.
void Install();

}  // namespace hostref::wire
