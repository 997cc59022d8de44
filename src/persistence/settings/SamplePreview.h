#pragma once
// What the settings dialog shows the colours on: a short program with one of each kind of token.

#include "editing/MvEdit.h"

namespace nib {

inline constexpr TextView kSampleProgram = u"* Prices of all open orders\r\n"
                                           u"SUBROUTINE PRICE.LIST(ORDERS, TOTAL)\r\n"
                                           u"TOTAL = 0\r\n"
                                           u"NEXT.ORDER:\r\n"
                                           u"LOOP\r\n"
                                           u"   REMOVE ID FROM ORDERS SETTING MORE\r\n"
                                           u"UNTIL ID = '' DO\r\n"
                                           u"   IF ID # \"CLOSED\" THEN TOTAL = TOTAL + 12.50 ; * net\r\n"
                                           u"REPEAT\r\n"
                                           u"IF MORE THEN GOTO NEXT.ORDER\r\n"
                                           u"RETURN";

/// Words of a user, who may have none yet.
inline constexpr TextView kSampleUserWords = u"REMOVE FROM SETTING RETURN";

/// Puts on the sample's own settings what can be seen of `settings`. Its keywords and its highlighting stay, so that
/// every colour shows.
void ShowOnSample(const MvEdit& settings, MvEdit& sample);
/// Settings that the sample begins with.
MvEdit SampleSettings();

} // namespace nib
