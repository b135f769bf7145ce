// Uses the installed simulation of links; its exit status tells whether it works.

#include <simulation/World.h>

int main() {
  Simulation::World world(1);
  world.run(5);
  return world.now() == 5 && world.settle() ? 0 : 1;
}
