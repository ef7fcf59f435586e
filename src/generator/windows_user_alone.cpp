#include "generator/windows_user_alone.h"

#include "runtime/failure.h"

#include <cstddef>
#include <string>

namespace desk {

namespace {

void check(BOOL worked) {
    if (worked) return;
    throw runtime_failure(failure::path_file_access_error,
                          "a pipe for this user alone can't be made: Windows error " + std::to_string(GetLastError()));
}

/// A TOKEN_USER with the identifier it points to.
std::vector<unsigned char> user_of_this_process() {
    HANDLE token = nullptr;
    check(OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token));
    DWORD size = 0;
    GetTokenInformation(token, TokenUser, nullptr, 0, &size);
    std::vector<unsigned char> user(size);
    const BOOL worked = GetTokenInformation(token, TokenUser, user.data(), size, &size);
    CloseHandle(token);
    check(worked);
    return user;
}

} // namespace

user_alone::user_alone() {
    std::vector<unsigned char> user = user_of_this_process();
    const PSID identifier = reinterpret_cast<TOKEN_USER*>(user.data())->User.Sid;
    list_.resize(sizeof(ACL) + sizeof(ACCESS_ALLOWED_ACE) + GetLengthSid(identifier));
    const auto list = reinterpret_cast<ACL*>(list_.data());
    check(InitializeAcl(list, static_cast<DWORD>(list_.size()), ACL_REVISION));
    check(AddAccessAllowedAce(list, ACL_REVISION, GENERIC_ALL, identifier));
    check(InitializeSecurityDescriptor(&descriptor_, SECURITY_DESCRIPTOR_REVISION));
    check(SetSecurityDescriptorDacl(&descriptor_, TRUE, list, FALSE));
    attributes_ = {sizeof attributes_, &descriptor_, FALSE};
}

} // namespace desk
