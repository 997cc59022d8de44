#include "hosts/network/ServerReader.h"

#include "platform/posix/FileName.h"

namespace nib {

namespace {

std::vector<Text> Names(const std::vector<std::string>& bytes)
{
    std::vector<Text> names;
    names.reserve(bytes.size());
    for (const std::string& name : bytes) names.push_back(FromFileName(name));
    return names;
}

} // namespace

std::vector<Text> ServerReader::Files()
{
    return Names(session_.Files());
}

std::vector<Text> ServerReader::Ids(TextView file)
{
    return Names(session_.ItemIds(ToFileName(file)));
}

std::optional<Text> ServerReader::Read(TextView file, TextView id)
{
    const ServerReply reply = session_.OnItem(ToFileName(file), ServerAction::Read, ToFileName(id));
    if (reply.result != ServerResult::Done || reply.status != 0)
        throw Error(error_number::kStorage, Text(id) + u" cannot be read: " + ServerRefusal(reply) + u".");
    if (reply.data.find('\0') != std::string::npos) return std::nullopt;
    TextForm form;
    return coding_.Decode(reply.data, form, id);
}

} // namespace nib
