namespace nib {}
