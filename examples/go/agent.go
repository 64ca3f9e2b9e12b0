// The smallest service, in Go: it waits until it is stopped.
//
//	go build -buildmode=c-shared -ldflags "-extldflags '$(pkg-config --libs launcher)'" -o libagent.so agent.go
package main

// #include <launcher/service_module.h>
import "C"

import (
	"fmt"
	"sync"
)

// There from the start, since StopService may be called before Bootstrap, and again after it.
var (
	stopRequested = make(chan struct{})
	once          sync.Once
)

//export Bootstrap
func Bootstrap(argc C.int, argv **C.char) C.int {
	fmt.Printf("%s runs, with %d parameters\n", C.GoString(*argv), argc-1)
	<-stopRequested
	fmt.Println("agent ends")
	return 0
}

//export StopService
func StopService() C.int {
	once.Do(func() { close(stopRequested) })
	return 0
}

func main() {}
