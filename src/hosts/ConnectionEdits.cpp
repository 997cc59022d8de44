#include "hosts/ConnectionEdits.h"

#include "diagnostics/Guarded.h"
#include "platform/posix/FileName.h"

namespace nib {

namespace {

constexpr TextView kNewName{u"connection"};

} // namespace

void ConnectionEdits::Set(TextView name, TextView key, TextView value)
{
    if (Trim(value) == Value(name, key)) return;
    file_.Set(name, key, value);
    changed_.emplace(name);
}

Text ConnectionEdits::Add(TextView kind)
{
    Text name(kNewName);
    for (int32_t number = 2; file_.Has(name); ++number) name = Text(kNewName) + Decimal(number);
    name = file_.Add(name);
    Set(name, u"kind", kind);
    return name;
}

Text ConnectionEdits::Rename(TextView name, TextView newName)
{
    const Text before(name);
    Text taken = file_.Rename(before, newName);
    if (changed_.erase(before)) changed_.insert(taken);
    return taken;
}

void ConnectionEdits::Remove(TextView name)
{
    const Text gone(name);
    file_.Remove(gone);
    changed_.erase(gone);
}

HostConfig ConnectionEdits::Config() const
{
    return HostConfig::Parse(file_.Content(), LocalDataFolder(), FolderOf(file_.Path()));
}

HostSettings ConnectionEdits::Settings(TextView name) const
{
    return Config().Find(name);
}

std::optional<ConnectionEdits::Fault> ConnectionEdits::FirstFault() const
{
    const HostConfig config = Config();
    for (const Text& name : changed_)
        if (const auto failure = FailureOf([&] { links_.Check(config.Find(name)); }))
            return Fault{name, failure->description};
    return std::nullopt;
}

void ConnectionEdits::Accept(const std::function<void(const HostSettings&)>& forget)
{
    file_.Save(links_.Saver());
    HostConfig config = Config();
    const std::vector<HostSettings> gone = links_.Config().LoginsGone(config);
    links_.Take(std::move(config));
    for (const HostSettings& host : gone) forget(host);
}

} // namespace nib
