#pragma once

namespace nib {

/// Gives the open file `to` the mode, owner, access control list and extended attributes of `from`. False when
/// something of it could not be carried over, so that replacing the file would lose it.
bool CopyTraits(int from, int to);

} // namespace nib
