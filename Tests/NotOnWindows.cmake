# Tests that can't run on Windows, or under Wine, and why.

set(notOnWindows
    # No stream opens on a directory there, to fail on the way.
    EnhancementsFileTest.readsNothingFromAStreamThatFailsOnTheWay
    ReadRecordsTest.tellsWhyThereIsNothing
    # Paths of more than 260 characters have to be allowed by the machine's administrator.
    ProtectionTest.makesCopiesOfFilesWithLongNames
    # Files never get the numbers of standard streams there.
    ProtectionTest.keepsThePrintedOutOfTheFileWhenTheStandardStreamsAreClosed
    # Wine opens files that were removed while others have them open, which Windows refuses.
    FileLockTest.takesNoFileThatWasReplacedOrRemovedBeforeTheLockWasAcquired
    # Hundreds of processes, each of which repeats the test so far, take longer than four minutes under Wine.
    FaultTest.losesNothingOfAStoredDocument
    KillTest.losesNoRecordOfALoadAndAnAddition
    # The objects of a program are destroyed before those of DLLs there, so that the receiver is still set.
    PsetDataTest.findsNoCallbackAndNoReceiverInADestructorAtTheEndOfTheProcess
)
# Not built there: UnloadTests and stress, which are about dlopen, fork and rlimits, and those of annotate and of the
# examples that start programs by a shell: .ci/windows has those of annotate start it under Wine.
