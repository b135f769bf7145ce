// What scripts/check-instructions runs under callgrind.

#include "Operation.h"

int main() {
  Instructions::mutators();
  Instructions::lookUps();
  Instructions::records();
  Instructions::walks();
  Instructions::texts();
  Instructions::generics();
}
