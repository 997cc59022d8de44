#pragma once
#include "platform/Fonts.h"

#include <map>

namespace nib {

class QtFonts final : public Fonts {
public:
    bool Add(TextView fileName) override;
    void Remove(TextView fileName) override;
    std::vector<Text> Families() const override;
    Text ProgramFolder() const override;

private:
    std::map<Text, int> added_; ///< file name to the toolkit's number
};

} // namespace nib
