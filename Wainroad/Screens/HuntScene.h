#pragma once

// The hunt itself: animals that cross the field, scenery that hides them, and one shot at a time.

#include "Wainroad/Frame/Sprites.h"
#include "Wainroad/Screens/Hunt.h"

namespace Wainroad {

// By kind of animal.
inline constexpr std::array<Int, kAnimalKinds> gAnimalFrames{5, 4, 3, 3, 4, 5, 4}; ///< number of the last frame
inline constexpr std::array<Int, kAnimalKinds> gAnimalDeathFrames{2, 2, 1, 1, 2, 2, 2};
inline constexpr std::array<Int, kAnimalKinds> gAnimalSpeed{3, 8, 9, 7, 6, 4, 10};         ///< pixels a frame
inline constexpr std::array<Int, kAnimalKinds> gAnimalFrameRate{3, 2, 2, 2, 2, 2, 2};      ///< frames an image
inline constexpr std::array<Int, kAnimalKinds> gAnimalFoodMin{250, 35, 1, 1, 175, 90, 20}; ///< pounds
inline constexpr std::array<Int, kAnimalKinds> gAnimalFoodRand{270, 25, 2, 1, 180, 30, 10};

extern bool gHuntOver; ///< a move to another spot clears the field at the next frame

/// A new field, with fresh animals to come and a fresh pouch of at most 20 bullets.
void PlaceScenery();
/// Fires at a point in window coordinates. Nothing while a shot flies; an empty gun clicks.
void Shoot(Int v, Int h);
/// Sends an animal across, unless two are out or four were shot here.
void NewAnimal();
/// Puts frame `first` to `first + range - 1` of the scenery anywhere on the field.
void AddScenery(Int first, Int range, Int id, Int mode);

void AnimalMove(Sprite& sprite);
void BulletMove(Sprite& sprite);
void SceneryMove(Sprite& sprite);

} // namespace Wainroad
