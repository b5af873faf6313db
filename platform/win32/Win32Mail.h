#pragma once

#include "platform/Jobs.h"
#include "platform/Mail.h"

namespace platform::win32 {

class Win32Mail final : public Mail {
public:
    explicit Win32Mail(Post post) : post{std::move(post)} {}

    Result<Ticket> Compose(std::string user, MailMessage message, std::function<void(MailOutcome)> done) override;

private:
    Post post;
};

} // namespace platform::win32
