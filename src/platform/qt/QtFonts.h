#pragma once
#include "platform/Fonts.h"

#include <map>

namespace nib {

class QtFonts : public Fonts {
public:
    bool Add(TextView fileName) override;
    void Remove(TextView fileName) override;
    std::vector<Text> Families() const override;
    Text ProgramFolder() const override;

private:
    /// Qt's numbers of the fonts added, by file name.
    std::map<Text, int, std::less<>> added_;
};

} // namespace nib
